// Writing the bytes of a key: all are counted, those that fit are stored.
//
// A key holds numbers in digits of base 254, each as a byte from 2 up. A number has as many digits
// as the largest of its kind needs, so that bytes compare as numbers do. Byte 1 separates the
// passes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace vel {

constexpr uint32_t key_base = 254;
constexpr unsigned char key_zero = 2;
constexpr unsigned char pass_separator = 1;

// The digits of every number of a kind whose largest is `bound`.
constexpr uint32_t key_digits(uint32_t bound) {
    return 1 + (bound >= 254) + (bound >= 254 * 254) + (bound >= 254 * 254 * 254) +
           (bound >= 254u * 254 * 254 * 254);
}

class key_writer {
public:
    key_writer(unsigned char *out, size_t size) : out_(out), size_(size) {}

    size_t count() const { return count_; }

    void put(unsigned char byte) {
        if (count_ < size_) out_[count_] = byte;
        ++count_;
    }

    [[gnu::always_inline]] void put_number(uint32_t number, uint32_t digits) {
        if (unsigned char *out = room_for(digits)) [[likely]] {
            write_number(out, number, digits);
        } else {
            put_what_fits(out_, size_, count_, number, digits);
        }
        count_ += digits;
    }

    // Where `bytes` more can be stored, or null. Whoever stores them says how far that went.
    unsigned char *room_for(size_t bytes) const {
        return count_ < size_ && size_ - count_ >= bytes ? out_ + count_ : nullptr;
    }
    void stored_up_to(const unsigned char *end) { count_ = static_cast<size_t>(end - out_); }

    // Numbers are written less 2. The values 0 and 1, which are so only beside other values, end in
    // a byte below every digit: they come before all values of as many digits.
    [[gnu::always_inline]] static unsigned char *write_number(unsigned char *out, uint32_t number,
                                                              uint32_t digits) {
        uint32_t value = number - 2;
        if (number < 2) [[unlikely]] {
            for (uint32_t i = 0; i < digits; ++i) out[i] = i + 1 < digits ? key_zero : key_zero - 1;
        } else if (digits == 2) {
            write_two(out, value);
        } else if (digits == 5) { // those of 2 and 5 are what most keys are made of
            uint32_t upper = value / (key_base * key_base);
            out[0] = out[1] = out[2] = key_zero;
            if (upper) write_three(out, upper);
            write_two(out + 3, value);
        } else {
            for (uint32_t i = digits; i-- > 0; value /= key_base) out[i] = digit(value);
        }
        return out + digits;
    }

    // Bytes of which all are stored that fit.
    void put_all(const unsigned char *bytes, size_t count) {
        if (count_ < size_) memcpy(out_ + count_, bytes, std::min(count, size_ - count_));
        count_ += count;
    }

    // Ends the key, if there is room for that, and gives its length.
    size_t finish() {
        if (count_ < size_) out_[count_] = 0;
        return count_;
    }

private:
    static unsigned char digit(uint32_t value) {
        return static_cast<unsigned char>(value % key_base + key_zero);
    }
    static void write_two(unsigned char *out, uint32_t value) {
        out[0] = digit(value / key_base);
        out[1] = digit(value);
    }
    static void write_three(unsigned char *out, uint32_t value) {
        out[0] = digit(value / (key_base * key_base));
        write_two(out + 1, value);
    }
    [[gnu::noinline]] static void put_what_fits(unsigned char *out, size_t size, size_t count,
                                                uint32_t number, uint32_t digits) {
        unsigned char written[sizeof(uint64_t)] = {}; // five digits and to spare
        write_number(written, number, digits);
        for (size_t i = 0; i < digits && count + i < size; ++i) out[count + i] = written[i];
    }

    unsigned char *out_;
    size_t size_;
    size_t count_ = 0;
};

} // namespace vel
