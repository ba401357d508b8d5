#include "vel/convert_stream.h"

#include <algorithm>

#include "vel/block_reader.h"

namespace vel_tool {
namespace {

constexpr size_t block_bytes = 256 << 10;
constexpr size_t longest_character = 8;
constexpr size_t shifted_bytes = 2; // of all characters in a shifted state
// Text is converted in windows. The library says that a window holds a character which the target
// lacks, but not where: then the window shrinks until the character stands in one of the least
// size, which is gone through character by character, and grows again while all is well.
constexpr size_t least_window = 4;
constexpr size_t shrink_by = 4;

} // namespace

void convert_stream::run(input &source, convert_progress &progress) {
    for_each_block(source, block_bytes, [&](std::string_view block, bool at_end) {
        size_t done = take_block(block, at_end);
        out_.flush(); // a slow producer's text is not held back
        progress.add(done);
        return done;
    });
    out_.write(chain_.ending());
}

// Returns the bytes done. What is left, unless this is the end of the text, is the beginning of a
// character.
size_t convert_stream::take_block(std::string_view block, bool at_end) {
    size_t done = 0;
    while (done < block.size()) {
        std::string_view rest = block.substr(done);
        size_t step = take_window(rest);
        if (step == 0) step = take_characters(rest, at_end);
        if (step == 0) break;
        done += step;
    }
    return done;
}

// Converts a stretch without problems. Returns 0 when the character in front needs a closer look.
size_t convert_stream::take_window(std::string_view rest) {
    while (window_ > least_window) {
        conversion_chain::state before = chain_.save();
        converted result = chain_.convert(rest.substr(0, window_));
        if (!result.is_lacking) {
            out_.write(result.output);
            offset_ += result.consumed;
            if (result.consumed > 0) window_ = std::min(2 * window_, most_window);
            return result.consumed;
        }
        chain_.restore(before);
        window_ = std::max(std::min(window_, rest.size()) / shrink_by, least_window);
    }
    return 0;
}

size_t convert_stream::take_characters(std::string_view rest, bool at_end) {
    size_t done = 0;
    uint64_t problems_before = problems_.count();
    while (done < std::min(rest.size(), least_window)) {
        size_t step = take_character(rest.substr(done), at_end);
        if (step == 0) break;
        done += step;
    }
    bool is_clean = problems_.count() == problems_before;
    if (done > 0) window_ = is_clean ? 2 * least_window : least_window;
    return done;
}

// Returns the bytes of the character or of the bad sequence in front, or 0 when they are only the
// beginning of a character and more text is to come.
size_t convert_stream::take_character(std::string_view rest, bool at_end) {
    conversion_chain::state before = chain_.save();
    size_t most = std::min(rest.size(), longest_character);
    for (size_t size = chain_.shortest(); size <= most; size += chain_.shortest()) {
        std::string_view text = rest.substr(0, size);
        converted result = chain_.convert(text);
        if (result.consumed > 0) {
            if (result.is_lacking)
                take_lacking(text, result.output, before);
            else
                out_.write(result.output);
            offset_ += result.consumed;
            return result.consumed;
        }
        if (result.error == VEL_EINVAL) continue;
        if (chain_.source_is_shifted()) {
            if (rest.size() < shifted_bytes && !at_end) return 0;
            text = rest.substr(0, invalid_shifted_bytes(rest));
        } else if (size > chain_.shortest()) {
            text.remove_suffix(chain_.shortest()); // which may begin a character of its own
        }
        take_bad(problem::invalid, text);
        return text.size();
    }
    if (rest.size() < longest_character && !at_end) return 0;
    std::string_view bytes = rest.substr(0, most);
    take_bad(problem::cut_off, bytes);
    return bytes.size();
}

// A whole character, so that the ones behind it are not taken apart; but a byte that stands for
// itself leads out of the shifted state and is no part of it.
size_t convert_stream::invalid_shifted_bytes(std::string_view text) {
    if (text.size() < shifted_bytes) return text.size();
    conversion_chain::state before = chain_.save();
    bool stands_for_itself = chain_.convert(text.substr(1, 1)).consumed > 0;
    chain_.restore(before);
    return stands_for_itself ? 1 : shifted_bytes;
}

void convert_stream::take_lacking(std::string_view character, std::string_view output,
                                  const conversion_chain::state &before) {
    problems_.add(problem::lacking, character, offset_);
    if (problems_.what_to_do() == remedy::substitute && !output.empty()) return out_.write(output);
    chain_.restore(before);
    if (problems_.what_to_do() == remedy::substitute) out_.write(chain_.substitute());
}

void convert_stream::take_bad(problem kind, std::string_view bytes) {
    problems_.add(kind, bytes, offset_);
    if (problems_.what_to_do() == remedy::substitute) out_.write(chain_.substitute());
    offset_ += bytes.size();
}

} // namespace vel_tool
