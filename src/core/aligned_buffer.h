#pragma once

#include <cstddef>
#include <memory>
#include <new>

namespace velmora {

/// Memory that starts at a page, for reading files into: the system copies several times slower to an address a few
/// bytes into a page, which is where large allocations normally start. The contents are undefined at first.
class AlignedBuffer {
public:
    explicit AlignedBuffer(std::size_t size)
        : m_data(static_cast<char *>(::operator new(size, std::align_val_t(pageSize)))), m_size(size)
    {}

    [[nodiscard]] char *data() const noexcept { return m_data.get(); }
    [[nodiscard]] std::size_t size() const noexcept { return m_size; }

private:
    static constexpr std::size_t pageSize = 4096;
    struct Free {
        void operator()(char *data) const noexcept { ::operator delete(data, std::align_val_t(pageSize)); }
    };

    std::unique_ptr<char, Free> m_data;
    std::size_t m_size;
};

} // namespace velmora
