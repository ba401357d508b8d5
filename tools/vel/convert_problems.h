// What a conversion cannot carry over: what becomes of it, how it is told, how often it happened.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vel/conversion_chain.h"
#include "vel/convert_progress.h"
#include "vel/invocation.h"

namespace vel_tool {

enum class remedy { stop, substitute, skip };

enum class problem {
    invalid, // bytes that are no character
    cut_off, // a character that the end of the text cuts off
    lacking, // a character that the target does not have
};

// The problems of one text.
class problem_log {
public:
    // The first `most` that do not stop the conversion are told one by one.
    problem_log(const invocation &run, const conversion_chain &chain, std::string file,
                remedy what_to_do, uint64_t most, convert_progress &progress)
        : run_(run), chain_(chain), file_(std::move(file)), remedy_(what_to_do), most_(most),
          progress_(progress) {}

    remedy what_to_do() const { return remedy_; }
    // `offset` is the number of the first byte in the text, from 0. When problems are to stop the
    // conversion, this throws a failure.
    void add(problem kind, std::string_view bytes, uint64_t offset);
    // Tells how many there were.
    void summarize();
    uint64_t invalid() const { return invalid_; }
    uint64_t count() const { return invalid_ + lacking_; }

private:
    std::string message(problem kind, std::string_view bytes, uint64_t offset);
    std::string names(std::string_view bytes);

    const invocation &run_;
    const conversion_chain &chain_;
    std::string file_;
    remedy remedy_;
    uint64_t most_;
    convert_progress &progress_;
    uint64_t invalid_ = 0;
    uint64_t lacking_ = 0;
    charmap_handle charmap_; // of the source, once a problem has come up
    bool charmap_was_tried_ = false;
};

} // namespace vel_tool
