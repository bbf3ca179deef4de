#pragma once

#include <utility>

#include <windows.h>

namespace velmora {

/// Owns an open file of the system.
class Handle {
public:
    explicit Handle(HANDLE handle) noexcept : m_handle(handle) {}
    Handle(Handle &&other) noexcept : m_handle(std::exchange(other.m_handle, INVALID_HANDLE_VALUE)) {}
    Handle &operator=(Handle &&other) noexcept
    {
        Handle old(std::move(other));
        std::swap(m_handle, old.m_handle);
        return *this;
    }
    ~Handle()
    {
        if (isOpen())
            ::CloseHandle(m_handle);
    }
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;

    [[nodiscard]] HANDLE get() const noexcept { return m_handle; }
    [[nodiscard]] bool isOpen() const noexcept { return m_handle != INVALID_HANDLE_VALUE; }

private:
    HANDLE m_handle;
};

} // namespace velmora
