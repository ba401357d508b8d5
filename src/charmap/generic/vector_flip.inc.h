// Members of `blocks`, for rungs whose blocks are the compiler's own vectors: the case of a block of
// ASCII. False, with nothing written, for a block that holds anything else. No include guard.
    static bool flip(const unsigned char *in, unsigned char *out, unsigned char first) {
        if (!is_ascii(in)) return false;
        bytes block = load(in);
        auto is_letter = (block - first) < 26;
        store(out, block ^ (reinterpret_cast<bytes>(is_letter) & 0x20));
        return true;
    }
    static bool flip(const vel_wchar *in, vel_wchar *out, unsigned char first) {
        constexpr size_t lanes = sizeof(words) / sizeof(vel_wchar);
        words block[size / lanes];
        words bits{};
        for (size_t i = 0; i < size / lanes; ++i) bits |= block[i] = load_words(in + lanes * i);
        if (any(reinterpret_cast<bytes>(bits & ~0x7Fu))) return false;
        for (size_t i = 0; i < size / lanes; ++i) {
            auto is_letter = (block[i] - first) < 26;
            store(out + lanes * i, block[i] ^ (reinterpret_cast<words>(is_letter) & 0x20));
        }
        return true;
    }
