#include "conv/runs_facts.h"

namespace vel {
namespace {

uint32_t first_byte(uint64_t cell) {
    return entry_bytes(cell) & 0xFF;
}

void note_same(run_facts &facts, const uint64_t *cells) {
    for (uint32_t b = 0; b < 0x80; ++b) {
        if (plain_length(cells[b]) == 1 && first_byte(cells[b]) == b) {
            facts.same[b] = 1;
            continue;
        }
        facts.other[b] = 0x80;
        facts.other_low[b & 15] |= static_cast<unsigned char>(1 << (b >> 4));
        if (facts.odd_count < most_odd_bytes) {
            facts.odd[facts.odd_count] = b * uint64_t{0x0101010101010101};
        }
        if (facts.odd_count < all_odd) ++facts.odd_count;
    }
}

bool is_to_bytes(const entry_table &table) {
    for (uint32_t i = 0; i < table.cell_count; ++i) {
        if (plain_length(table.cells()[i]) > 1) return false;
    }
    return true;
}

void note_map(run_facts &facts, const uint64_t *cells) {
    bool is_target[256] = {};
    for (uint32_t b = 0; b < 256; ++b) {
        bool mapped = plain_length(cells[b]) == 1;
        facts.map[b] = static_cast<uint16_t>(mapped ? first_byte(cells[b]) : 0x100);
        if (mapped) is_target[first_byte(cells[b])] = true;
    }
    uint32_t none = 0;
    while (none < 256 && is_target[none]) ++none;
    facts.all_plain = none == 256;
    facts.none = static_cast<unsigned char>(none);
    for (uint32_t b = 0; b < 256; ++b) {
        facts.bytes[b] = static_cast<unsigned char>(facts.map[b] < 0x100 ? facts.map[b] : none);
    }
}

bool has_zero_byte(uint32_t bytes, uint32_t length) {
    for (uint32_t i = 0; i < length; ++i) {
        if ((bytes >> (8 * i) & 0xFF) == 0) return true;
    }
    return false;
}

void note_spread(run_facts &facts, const uint64_t *cells) {
    facts.spread_fits = plain_length(cells[0]) == 0;
    for (uint32_t b = 0; b < 256; ++b) {
        uint32_t length = plain_length(cells[b]);
        uint32_t bytes = entry_bytes(cells[b]);
        if (length == 0) continue;
        if (length > 3 || has_zero_byte(bytes, length)) facts.spread_fits = false;
        if (length > 2) facts.has_thirds = true;
        for (uint32_t i = 0; i < 3; ++i) {
            facts.spread[i][b] = static_cast<unsigned char>(bytes >> (8 * i));
        }
    }
}

// `cells` is the row of first bytes, of which there are `width` from `low` on; `depth` that of the
// second bytes.
void note_rows(run_facts &facts, const entry_table &table, const uint64_t *cells, uint32_t low,
               uint32_t width, int32_t depth) {
    facts.row_low = table.low[depth];
    facts.row_width = table.width[depth];
    for (uint32_t i = 0; i < width; ++i) {
        if (!is_more(cells[i])) continue;
        facts.leads[low + i] = 0x80;
        facts.rows[low + i] = next_row(cells[i]);
    }
}

// In a table of units of four bytes, the third and fourth are looked at of those that begin with
// two zero bytes.
void note_low_units(run_facts &facts, const entry_table &table) {
    uint64_t cell = table.cells()[0];
    for (int32_t depth = 1; depth < 3; ++depth) {
        const uint64_t *row = table.cells() + next_row(cell);
        if (!is_more(cell) || table.width[depth] == 0) return;
        if (depth == 2) {
            return note_rows(facts, table, row, table.low[2], table.width[2], 3);
        }
        cell = table.low[depth] == 0 ? row[0] : 0;
    }
}

bool is_like_utf8(const entry_table &table) {
    const uint64_t *cells = table.cells();
    if (table.longest < 3) return false;
    for (int32_t depth = 1; depth < 3; ++depth) {
        if (table.low[depth] != 0x80 || table.width[depth] != 0x40) return false;
    }
    for (uint32_t b = 0; b < 0x80; ++b) {
        if (is_more(cells[b])) return false;
    }
    for (uint32_t b = 0x80; b < 0xC2; ++b) {
        if (cells[b] != 0) return false;
    }
    for (uint32_t b = 0xC2; b < 0xF0; ++b) {
        if (is_end(cells[b])) return false;
    }
    return true;
}

void note_stretches(run_facts &facts, const entry_table &table) {
    const uint64_t *cells = table.cells();
    facts.stretches[1] = 0x40;
    for (uint32_t lead = 0xC2; lead < 0xE0; ++lead) {
        if (is_more(cells[lead])) facts.stretches[lead & 0x1F] = next_row(cells[lead]);
    }
    for (uint32_t lead = 0xE0; lead < 0xF0; ++lead) {
        if (!is_more(cells[lead])) continue;
        const uint64_t *row = cells + next_row(cells[lead]);
        for (uint32_t trail = lead == 0xE0 ? 0x20 : 0; trail < 0x40; ++trail) {
            if (is_more(row[trail]))
                facts.stretches[(lead & 15) << 6 | trail] = next_row(row[trail]);
        }
    }
}

void note_narrow(run_facts &facts, const entry_table &table) {
    for (uint32_t lead = 2; lead < 32; ++lead) {
        if (facts.stretches[lead] == 0) continue;
        const uint64_t *row = table.cells() + facts.stretches[lead];
        for (uint32_t trail = 0; trail < 64; ++trail) {
            bool is_byte = plain_length(row[trail]) == 1;
            facts.narrow[lead][trail] =
                static_cast<unsigned char>(is_byte ? first_byte(row[trail]) : 0);
        }
    }
}

run_source source_of(const entry_table &table, int32_t unit) {
    if (unit == 1) return run_source::bytes_to_bytes;
    if (unit) return unit == 2 ? run_source::units2 : run_source::units4;
    bool to_bytes = is_to_bytes(table);
    if (table.longest == 1) return to_bytes ? run_source::bytes_to_bytes : run_source::bytes;
    if (is_like_utf8(table)) return to_bytes ? run_source::utf8_to_bytes : run_source::utf8;
    return run_source::pairs;
}

} // namespace

run_facts *learn_run_facts(const entry_table &table, int32_t unit) {
    host_ptr<run_facts> facts = make_host<run_facts>();
    if (!facts) return nullptr;
    const uint64_t *cells = table.cells();
    facts->source = source_of(table, unit);
    if (!unit) note_same(*facts, cells);
    switch (facts->source) {
    case run_source::bytes_to_bytes:
        note_map(*facts, cells);
        break;
    case run_source::bytes:
        note_spread(*facts, cells);
        break;
    case run_source::pairs:
    case run_source::units2:
        note_rows(*facts, table, cells, 0, 256, 1);
        break;
    case run_source::units4:
        note_low_units(*facts, table);
        break;
    case run_source::utf8:
    case run_source::utf8_to_bytes:
        note_stretches(*facts, table);
        if (facts->source == run_source::utf8_to_bytes) note_narrow(*facts, table);
        break;
    }
    return facts.release();
}

} // namespace vel
