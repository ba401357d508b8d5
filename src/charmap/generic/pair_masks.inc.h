// Two-byte characters by masks of 64 bytes that begin with a character. No include guard.

// The second bytes, where `leads` are all bytes that may lead two. In a run of leads every other
// byte is a trail, and so is the byte behind a run of odd length. Adding the first bytes of the
// runs that begin at even places clears just those runs.
inline uint64_t trails_behind(uint64_t leads) {
    constexpr uint64_t even = 0x5555555555555555;
    uint64_t first = leads & ~(leads << 1);
    uint64_t even_runs = leads & ~(leads + (first & even));
    uint64_t odd_runs = leads & ~even_runs;
    return (even_runs << 1 & ~even) | (odd_runs << 1 & even);
}
