#include "velc/cmo_file.h"

#include "velc/tool_error.h"

namespace velc {

namespace {

constexpr int largest_code = static_cast<int>(last_code_point);
constexpr int most_characters = 1 << 21;

byte_sequence read_bytes(object_input &in) {
    byte_sequence bytes;
    bytes.length = static_cast<std::uint8_t>(in.integer(1, 4));
    for (int i = 0; i < bytes.length; ++i) bytes.value = bytes.value << 8 | in.hex(2);
    return bytes;
}

cmo_row read_row(object_input &in) {
    cmo_row row;
    const std::string kind = in.word();
    if (kind != "s" && kind != "r") in.fail(fmt::format("\"{}\"", kind), "s or r");
    row.range = kind == "r";
    row.code = static_cast<std::uint32_t>(in.integer(0, largest_code));
    row.name = in.word();
    in.set_place(row.name);
    if (row.range) {
        row.first_index = static_cast<std::uint32_t>(in.integer(0, largest_code));
        row.count = static_cast<std::uint32_t>(in.integer(1, most_characters));
    }
    row.bytes = read_bytes(in);
    return row;
}

void insert(object_input &in, vel::vel_trie &table, const cmo_row &row) {
    const vel::vel_mbkey first = key_of(row.bytes);
    for (std::uint32_t i = 0; i < row.count; ++i) {
        vel::vel_mbkey key;
        vel::vel_mbkey_add(&first, static_cast<std::int32_t>(i), &key);
        if (vel::vel_trie_insert(&table, &key, nullptr) != 0)
            in.fail("a character that begins with another, or another with it",
                    "characters that can be told apart");
    }
}

void read_conversion_value(vel::text_reader &stream, unsigned char *value, std::int32_t size) {
    value[0] = static_cast<unsigned char>(vel::vel_read_hex_byte(stream));
    const int bytes = value[0] & 7;
    for (int i = 1; i <= bytes; ++i) {
        const int byte = vel::vel_read_hex_byte(stream);
        if (i < size) value[i] = static_cast<unsigned char>(byte);
    }
    for (int i = bytes + 1; i < size; ++i) value[i] = 0;
}

} // namespace

cmo_file read_cmo(const std::filesystem::path &path) {
    object_input in(path);
    cmo_file file;
    file.head = in.read_head();
    if (file.head.kind != object_kind::charmap)
        in.fail("another type of object", "FILE_TYPE=charmap_object");
    (void)in.line();
    const std::uint16_t none = 0;
    file.characters.reset(vel::vel_trie_create(sizeof none, 0, &none));
    if (!file.characters) throw std::bad_alloc();
    while (!in.at_end()) {
        file.rows.push_back(read_row(in));
        insert(in, *file.characters, file.rows.back());
    }
    if (file.rows.empty()) in.fail("no characters", "at least one");
    return file;
}

cvo_file read_cvo(const std::filesystem::path &path) {
    object_input in(path);
    cvo_file file;
    file.head = in.read_head();
    if (file.head.kind != object_kind::conversion)
        in.fail("another type of object", "FILE_TYPE=codeset_conversion_object");
    in.set_place("parameters");
    file.source_shifted = in.integer();
    file.target_shifted = in.integer();
    (void)in.at_end();
    for (std::string &sequence : file.sequences) {
        const std::uint32_t length = in.hex_here(1);
        if (length > 4) in.fail(std::to_string(length), "a length from 0 to 4");
        for (std::uint32_t i = 0; i < length; ++i) sequence += static_cast<char>(in.hex_here(2));
    }
    file.target_min = in.integer(0, 4);
    file.target_max = in.integer(1, 4);
    for (int &number : file.spare) number = in.integer();
    file.source_min = in.integer(0, 4);
    file.source_max = in.integer(1, 4);
    file.byte_map_given = in.integer();
    file.expansion = in.real();
    in.set_place("table");
    file.table = in.table(file.target_max + 1, read_conversion_value);
    in.set_place("table of the shifted state");
    if (file.source_shifted)
        file.shift_table = in.table(file.target_max + 1, read_conversion_value);
    in.set_place("end");
    if (!in.at_end()) in.fail("more text", "the end of the file");
    return file;
}

} // namespace velc
