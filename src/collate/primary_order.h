// The order of strings by their first-pass keys, without writing the keys.
#pragma once

#include "collate/faces.h"

namespace vel {

class primary_order {
public:
    explicit primary_order(const vel_locale *locale);

    // Negative, 0 or positive.
    int32_t compare(wide_text a, wide_text b);
    // Never greater for the smaller of two keys: a look at the first weight, where that tells.
    rank_t first_rank(wide_text text) const;
    // Whether an expansion has the key of a single character.
    bool has_expansion(wide_text character) const;
    // Whether memory was missing, and results since do not count.
    bool failed() const { return failed_; }

private:
    int32_t compare_bytes(wide_text a, wide_text b) const;
    int32_t compare_backward(wide_text a, wide_text b);
    bool is_key_of(const collating_expansion &expansion, wide_text character) const;

    const vel_locale *locale_;
    weighing by_;
    bool failed_ = false;
    // The numbers of the weights that keys of expansions begin with; 0 for an empty key.
    uint64_t expansion_starts_[(weight_mask + 1) / 64] = {};
};

} // namespace vel
