// Every difference of conversions from the host's that is known and meant, as known_differences.h
// has those of characters. Values are bytes where characters are read, else code points.
#pragma once

#include "differential/known_differences.h"

namespace differential {

inline constexpr std::string_view lone_accents = "accents without letters";
inline constexpr std::string_view one_way = "written, but read as another";
inline constexpr std::string_view several_codes = "one character, several code points";
inline constexpr std::string_view unused_planes = "planes without characters";
inline constexpr std::string_view lost = "there, but not written";
inline constexpr std::string_view other_source = "the host disagrees with its charmap";

inline constexpr std::string_view only_ours_reads = "read only by ours";
inline constexpr std::string_view only_host_reads = "read only by the host";
inline constexpr std::string_view reads_another = "read as another";
inline constexpr std::string_view only_ours_writes = "written only by ours";
inline constexpr std::string_view only_host_writes = "written only by the host";
inline constexpr std::string_view writes_another = "written as another";

inline constexpr known_difference known_conversions[] = {
    {"ANSI_X3.110-1983", only_ours_reads, 0xC9, 0xCC, 2, lone_accents},
    {"ANSI_X3.110-1983", only_ours_writes, 0xE00C, 0xE011, 2, lone_accents},
    {"ISO_6937", only_ours_reads, 0xC9, 0xC9, 1, lone_accents},
    {"ISO_6937", only_ours_writes, 0xE00C, 0xE00C, 1, lone_accents},
    {"T.61-8BIT", only_ours_reads, 0xCC, 0xCC, 1, lone_accents},
    {"T.61-8BIT", only_ours_writes, 0xE00C, 0xE00C, 1, lone_accents},
    {"ISO-IR-90", only_ours_reads, 0xCC, 0xCC, 1, lone_accents},
    {"ISO-IR-90", only_ours_writes, 0xE00C, 0xE00C, 1, lone_accents},
    {"ISO-IR-90", reads_another, 0x7E, 0x7E, 1, other_source},
    {"ISO-IR-90", only_host_reads, 0xA6, 0xC520, 3, other_source},
    {"ISO-IR-90", only_ours_writes, 0x203E, 0x203E, 1, other_source},
    {"ISO-IR-90", only_host_writes, 0xAF, 0xAF, 1, other_source},
    {"ISO-IR-90", writes_another, 0x23, 0xA4, 3, other_source},
    {"MAC-CYRILLIC", reads_another, 0xA2, 0xA2, 1, other_source},
    {"MAC-CYRILLIC", only_ours_writes, 0xA2, 0xA2, 1, other_source},
    {"MAC-CYRILLIC", only_host_writes, 0x490, 0x490, 1, other_source},
    {"CP1255", only_host_writes, 0xFB1D, 0xFB4E, 34, composed},
    {"CP1258", only_host_writes, 0xC3, 0x1FEE, 183, composed},
    {"EUC-JP", only_host_writes, 0xA5, 0x203E, 2, one_way},
    {"EUC-JP-MS", only_host_writes, 0xA2, 0x301C, 10, one_way},
    {"EUC-KR", only_host_writes, 0x20A9, 0x20A9, 1, one_way},
    {"IBM1163", only_host_writes, 0xD0, 0x203E, 2, one_way},
    {"IBM1164", only_host_writes, 0xD0, 0x203E, 2, one_way},
    {"IBM856", only_host_writes, 0x203C, 0xFFEE, 36, one_way},
    {"IBM922", only_host_writes, 0x2017, 0xFFEE, 69, one_way},
    {"SHIFT_JIS", only_host_writes, 0x5C, 0xFFE2, 5, one_way},
    {"SHIFT_JISX0213", only_host_writes, 0x5C, 0x7E, 2, one_way},
    {"WINDOWS-31J", only_host_writes, 0xA2, 0x301C, 9, one_way},
    {"EUC-JISX0213", only_host_reads, 0xA4F7, 0xABE6, 25, several_codes},
    {"SHIFT_JISX0213", only_host_reads, 0x82F5, 0x8686, 25, several_codes},
    {"IBM1390", only_host_reads, 0x0EECB5, 0x0EECCD, 25, several_codes},
    {"IBM1399", only_host_reads, 0x0EECB5, 0x0EECCD, 25, several_codes},
    {"TSCII", only_host_reads, 0x82, 0xFD, 63, several_codes},
    {"BIG5-HKSCS", only_host_reads, 0x8862, 0x88A5, 4, listed_only},
    {"GB18030", only_host_reads, 0x95329031, 0x9635B630, 6, listed_only},
    {"GB18030", only_host_reads, 0x9B378436, 0xE3329A35, 765954, unused_planes},
    {"GB18030", only_host_writes, 0x34000, 0x3FFFF, 49152, unused_planes},
    {"UTF-8", only_host_reads, 0xF0B48080, 0xF48FBFBF, 897024, unused_planes},
    {"UTF-16BE", only_host_writes, 0x34000, 0x3FFFF, 49152, unused_planes},
    {"UTF-16LE", only_host_writes, 0x34000, 0x3FFFF, 49152, unused_planes},
    {"UTF-32", only_host_writes, 0x34000, 0x3FFFF, 49152, unused_planes},
    {"UTF-32BE", only_host_writes, 0x34000, 0x3FFFF, 49152, unused_planes},
    {"IBM930", writes_another, 0x5C, 0x7E, 2, lost},
    {"IBM939", writes_another, 0x5C, 0x7E, 2, lost},
    {"IBM1371", writes_another, 0x5C, 0x5C, 1, lost},
};

// Code sets of which the host has a charmap at most, and no converter.
inline constexpr std::string_view unknown_to_the_host =
    "BS_VIEWDATA CSA_Z243.4-1985-GR HZ INVARIANT ISO_646.BASIC ISO_646.IRV ISO_6937-2-25 "
    "ISO_6937-2-ADD ISO_8859-SUPP JIS_C6220-1969-JP JIS_C6229-1984-A JIS_C6229-1984-B-ADD "
    "JIS_C6229-1984-HAND JIS_C6229-1984-HAND-ADD JIS_C6229-1984-KANA JIS_X0201 "
    "JUS_I.B1.003-MAC JUS_I.B1.003-SERB NATS-DANO-ADD NATS-SEFI-ADD NEXTSTEP SAMI T.101-G2 "
    "T.61-7BIT VIDEOTEX-SUPPL ";

} // namespace differential
