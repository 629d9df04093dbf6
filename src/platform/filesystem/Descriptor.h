#pragma once

#include <cerrno>
#include <utility>

namespace orvane {

/// An open file descriptor that closes itself.
class Descriptor
{
public:
    Descriptor() = default;

    /// Takes over `number`; a negative one is none.
    explicit Descriptor(int number)
        : number_(number)
    {
    }

    ~Descriptor() { close(); }

    Descriptor(Descriptor&& other) noexcept
        : number_(std::exchange(other.number_, -1))
    {
    }

    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }

    bool isOpen() const { return number_ >= 0; }

    /// The descriptor's number, -1 for none.
    int number() const { return number_; }

    /// Closes it once, whatever the outcome; false with errno set when the system reports that written bytes were lost.
    bool close() noexcept;

private:
    int number_ = -1;
};

/// Calls the system again for as long as a signal interrupts the call.
template <typename Call>
auto retried(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

} // namespace orvane
