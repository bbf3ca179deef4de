#pragma once

#include <memory>

namespace velmora {

/// A value that hardly any of many records have: it takes a pointer's room where it is `T()`. Copies are deep.
template <typename T>
class Rare {
public:
    Rare() = default;
    Rare(const T &value) : m_value(value == T() ? nullptr : std::make_unique<T>(value)) {}
    Rare(const Rare &other) : m_value(other.m_value ? std::make_unique<T>(*other.m_value) : nullptr) {}
    Rare(Rare &&) noexcept = default;
    Rare &operator=(const Rare &other)
    {
        if (this != &other)
            m_value = other.m_value ? std::make_unique<T>(*other.m_value) : nullptr;
        return *this;
    }
    Rare &operator=(Rare &&) noexcept = default;
    ~Rare() = default;

    [[nodiscard]] const T &get() const
    {
        static const T none;
        return m_value ? *m_value : none;
    }
    operator const T &() const { return get(); }
    const T *operator->() const { return &get(); }

    friend bool operator==(const Rare &left, const Rare &right) { return left.get() == right.get(); }

private:
    std::unique_ptr<T> m_value;
};

} // namespace velmora
