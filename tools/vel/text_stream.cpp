#include "vel/text_stream.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace vel_tool {
namespace {

constexpr size_t block_bytes = 1 << 20;
// Runs are taken in windows, so that they stay in the processor's cache and a wrong guess at their
// end costs little. The window shrinks to the least at an invalid sequence and doubles while all is
// well: text that is full of them is gone through character by character.
constexpr size_t most_window = 128 << 10;
constexpr size_t least_window = 64;
// How far to look back for a byte that surely begins a character.
constexpr size_t look_back_bytes = 4096;
constexpr size_t tail_bytes = 256;
// Bytes below this one are never the second or a later byte of a character.
constexpr unsigned char least_trailing_byte = 0x30;

class walker {
public:
    walker(const code_set &codes, text_visitor &visitor) : codes_(codes), visitor_(visitor) {}

    // Goes through a block and returns the bytes done. What is left, unless this is the end of the
    // stream, is the beginning of a character.
    size_t walk(text_run block, bool at_end) {
        size_t done = 0;
        while (done < block.size) {
            text_run rest{block.data + done, block.size - done};
            size_t step = window_ > least_window ? guess_and_take(rest) : 0;
            if (step == 0) step = search(rest, at_end);
            if (step == 0) break;
            if (step + codes_.longest() > window_) window_ = std::min(2 * window_, most_window);
            done += step;
            offset_ += step;
        }
        return done;
    }

private:
    size_t guess_and_take(text_run rest) {
        text_run run{rest.data, 0};
        run.size = whole_characters({rest.data, std::min(rest.size, window_)});
        return run.size > 0 && visitor_.take(run) ? run.size : 0;
    }

    // Goes character by character up to the first invalid sequence or the end of the window.
    size_t search(text_run rest, bool at_end) {
        size_t characters = 0;
        size_t size = 0;
        int length = code_set::incomplete;
        while (size < std::min(rest.size, window_)) {
            length = codes_.character(rest.view().substr(size));
            if (length < 1) break;
            size += static_cast<size_t>(length);
            ++characters;
        }
        if (size > 0) {
            visitor_.take_valid({rest.data, size}, characters);
            return size;
        }
        if (length == code_set::incomplete && !at_end) return 0;
        window_ = least_window;
        size_t bad = codes_.invalid_bytes(rest.view());
        visitor_.take_invalid({rest.data, bad}, offset_);
        return bad;
    }

    // A guess at how many bytes of the text are whole characters, right nearly always.
    size_t whole_characters(std::string_view text) const {
        if (codes_.is_fixed()) return text.size() / codes_.shortest() * codes_.shortest();
        if (codes_.shortest() == 1) {
            size_t least = text.size() - std::min(text.size(), look_back_bytes);
            for (size_t at = text.size(); at-- > least;) {
                if (static_cast<unsigned char>(text[at]) < least_trailing_byte) {
                    return complete_from(text, at);
                }
            }
        }
        return complete_from_tail(text);
    }

    // The end of the last whole character when a character begins at `at`.
    size_t complete_from(std::string_view text, size_t at) const {
        while (at < text.size()) {
            int length = codes_.character(text.substr(at));
            if (length < 1) break;
            at += static_cast<size_t>(length);
        }
        return at;
    }

    // The same with nothing known: the first of some places near the end from which decoding
    // reaches the end.
    size_t complete_from_tail(std::string_view text) const {
        size_t unit = codes_.shortest();
        size_t from = (text.size() - std::min(text.size(), tail_bytes)) / unit * unit;
        for (size_t n = 0; n < codes_.longest() / unit && from < text.size(); ++n, from += unit) {
            size_t end = complete_from(text, from);
            if (text.size() - end < codes_.longest()) return end;
        }
        return text.size() / unit * unit;
    }

    const code_set &codes_;
    text_visitor &visitor_;
    uint64_t offset_ = 0;
    size_t window_ = most_window;
};

} // namespace

void walk_text(const code_set &codes, input &source, text_visitor &visitor) {
    std::vector<char> buffer(block_bytes + text_run::spare_bytes);
    walker walk(codes, visitor);
    size_t kept = 0;
    bool at_end = false;
    while (!at_end) {
        size_t got = source.read(buffer.data() + kept, block_bytes - kept);
        at_end = got == 0;
        size_t size = kept + got;
        size_t done = walk.walk({buffer.data(), size}, at_end);
        kept = size - done;
        memmove(buffer.data(), buffer.data() + done, kept);
    }
}

} // namespace vel_tool
