// The table of a rung that has no kernels of its own beside the generic ones. No include guard.
constexpr text_kernels vector_kernels = {
    {loops_of<table_set<false>>,
     loops_of<table_set<false>>,
     {decode_utf8, count_utf8, encode_packed<utf8_set>},
     {decode_set<table_set<true>>, count_set<table_set<true>>, encode_packed<table_set<true>>}},
    widen_bytes,
    narrow_bytes,
    wide_run,
    flip_run<unsigned char>,
    flip_run<vel_wchar>,
};
