#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

/// The bytes that the fuzzer invented, taken from the front as decisions; when they are used up, every answer
/// is zero. The same bytes always lead to the same run.
///
///     Input input(data, size);
///     while (!input.empty()) {
///         if (input.upTo(3) == 0) move(input.raw<short>());
class Input {
public:
    Input(const std::uint8_t* data_, std::size_t size_) : data(data_), size(size_) {}

    bool empty() const { return size == 0; }
    std::uint8_t byte() { return raw<std::uint8_t>(); }
    /// 0 to `most`, which is at most 255.
    int upTo(int most) { return byte() % (most + 1); }
    bool flag() { return (byte() & 1u) != 0; }

    /// Any pattern of bits.
    template <class T>
    T raw();

    /// Mostly tame numbers in steps of 1/16, some of the famous ones, and any pattern of bits.
    double number();

    /// The next bytes, at most `most`.
    std::string text(std::size_t most);

private:
    const std::uint8_t* data;
    std::size_t size;
};

template <class T>
T Input::raw() {
    static_assert(std::is_arithmetic_v<T> && !std::is_same_v<T, bool>,
                  "a type of which every pattern is a value");
    T value{};
    const std::size_t taken = size < sizeof value ? size : sizeof value;
    if (taken > 0) {
        std::memcpy(&value, data, taken);
    }
    data += taken;
    size -= taken;
    return value;
}

/// Ends the process with a message, and so counts as a find, unless the promise is kept.
void require(bool kept, const char* promise);
