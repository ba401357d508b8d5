// The values before the first 0. Blocks are read at their own alignment, so none crosses a page. No
// include guard.
VEL_READS_AROUND inline size_t wide_run(const vel_wchar *in, size_t n) {
    constexpr size_t words = blocks::size / 4;
    size_t misfit = reinterpret_cast<uintptr_t>(in) / 4 % words;
    const vel_wchar *block = in - misfit;
    uint32_t zeros = blocks::zero_words(block) >> misfit;
    if (zeros) return smaller(n, static_cast<size_t>(__builtin_ctz(zeros)));
    size_t i = words - misfit;
    for (; i < n; i += words) {
        zeros = blocks::zero_words(in + i);
        if (zeros) return smaller(n, i + static_cast<size_t>(__builtin_ctz(zeros)));
    }
    return n;
}
