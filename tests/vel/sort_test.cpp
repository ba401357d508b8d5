// vel sort, sort-key and compare: the order of locales, in memory and by the sort program.
#include "vel/runner.h"

namespace {

using namespace vel_test;

class sort : public vel_tool_test {
protected:
    // What sorting gives in memory, and with so little of it that the sort program does the work.
    std::string sorted(const std::string &text, std::vector<std::string> arguments,
                       int status = 0) {
        arguments.insert(arguments.begin(), "sort");
        outcome got = vel_on(text, arguments);
        EXPECT_EQ(got.status, status) << got.err;
        arguments.insert(arguments.end(), {"--memory", "1"});
        outcome other = vel_on(text, arguments);
        EXPECT_EQ(other.status, status) << other.err;
        EXPECT_EQ(other.out, got.out) << "by the sort program";
        return got.out;
    }
};

TEST_F(sort, order_of_locales) {
    struct {
        const char *locale, *lines, *order;
    } cases[] = {
        {"de_DE.UTF-8", "Zebra\nÄpfel\nöl\nApfel\näpfel\nÖl\nOtto\n",
         "Apfel\näpfel\nÄpfel\nöl\nÖl\nOtto\nZebra\n"},
        {"sv_SE.UTF-8", "Öl\nÄpfel\nZebra\nÅr\nApfel\nåka", "Apfel\nZebra\nåka\nÅr\nÄpfel\nÖl\n"},
        {"es_ES.UTF-8", "ñu\nobra\nnube\nnudo\n", "nube\nnudo\nñu\nobra\n"},
        {"de_DE.ISO-8859-1", "Z\n\xC4\nA\n", "A\n\xC4\nZ\n"},
        {"en_US.IBM037", "\xC2\x0A\x25\x82\x25\xC1\x25", "\xC1\x25\x82\x25\xC2\x0A\x25"},
        {"C", "b\n\nä\nB\na", "\nB\na\nb\nä\n"},
        {"C", "", ""},
    };
    for (const auto &row : cases) {
        EXPECT_EQ(sorted(row.lines, {"-l", row.locale}), row.order) << row.locale;
    }
}

TEST_F(sort, fields_and_flags) {
    const std::string table = "b,2,x\na,10\nc\nd,2,y\n", blanks = "  x  2\ny 1\nz\n\tw\t2 1\n";
    struct {
        std::string text;
        std::vector<std::string> arguments;
        const char *order;
    } cases[] = {
        {table, {"-t", ",", "-k", "2"}, "c\na,10\nb,2,x\nd,2,y\n"},
        {table, {"-t", ",", "-k", "2", "-r"}, "b,2,x\nd,2,y\na,10\nc\n"},
        {table, {"-t", ",", "-k", "2", "-u"}, "c\na,10\nb,2,x\n"},
        {table, {"-t", ",", "-k", "3"}, "a,10\nc\nb,2,x\nd,2,y\n"},
        {"a€€1\nb€0\n", {"-t", "€", "-k", "2"}, "a€€1\nb€0\n"},
        {blanks, {"-k", "1"}, "\tw\t2 1\n  x  2\ny 1\nz\n"},
        {blanks, {"-k", "2"}, "z\ny 1\n  x  2\n\tw\t2 1\n"},
        {"b\u3000"
         "1\nc \na\u3000"
         "0\n",
         {"-k", "2"},
         "c \na\u3000"
         "0\nb\u3000"
         "1\n"},
        {"b\na\nb\nB\na\n", {"-u"}, "a\nb\nB\n"},
        {"b\na\nb\n", {"-r"}, "b\nb\na\n"},
    };
    for (auto &row : cases) {
        row.arguments.insert(row.arguments.end(), {"-l", "de_DE.UTF-8"});
        EXPECT_EQ(sorted(row.text, row.arguments), row.order) << row.text;
    }
}

TEST_F(sort, any_byte_has_its_place) {
    const char bytes[] = "\x0B\n\t\n\b\n\7\n\2\n\1\n\0\n\n\1\1\n\b\t\n";
    const char order[] = "\n\0\n\1\n\1\1\n\2\n\7\n\b\n\b\t\n\t\n\x0B\n";
    EXPECT_EQ(sorted({bytes, sizeof bytes - 1}, {"-l", "C"}), std::string(order, sizeof order - 1));
    // The parts between null characters count one after the other.
    const char parts[] = "b\0a\na\0b\na\na\0\xC3\xA4\n";
    const char parts_in_order[] = "a\na\0\xC3\xA4\na\0b\nb\0a\n";
    EXPECT_EQ(sorted({parts, sizeof parts - 1}, {"-l", "de_DE"}),
              std::string(parts_in_order, sizeof parts_in_order - 1));
}

TEST_F(sort, long_lines_and_many) {
    const std::string tail = repeated("é", 300000);
    EXPECT_EQ(sorted(tail + "b\nz\n" + tail + "a\n", {"-l", "fr_FR"}),
              tail + "a\n" + tail + "b\nz\n");
    std::string text, order;
    for (int i = 0; i < 20000; ++i) text += std::to_string(10000 + (i * 7919) % 20000) + "\n";
    for (int i = 0; i < 20000; ++i) order += std::to_string(10000 + i) + "\n";
    EXPECT_EQ(sorted(text, {"-l", "C"}), order);
}

TEST_F(sort, invalid_lines_come_last_and_are_told) {
    const std::string text = "b\n\xFF\nx\xE2\x82\na\n\xFE z\n";
    EXPECT_EQ(sorted(text, {"-l", "de_DE"}, 1), "a\nb\nx\xE2\x82\n\xFE z\n\xFF\n");
    EXPECT_EQ(sorted(text, {"-l", "de_DE", "-k", "1"}, 1), "a\nb\nx\xE2\x82\n\xFE z\n\xFF\n");
    EXPECT_EQ(sorted(text, {"-l", "de_DE", "-r"}, 1), "\xFF\n\xFE z\nx\xE2\x82\nb\na\n");
    EXPECT_EQ(sorted("b\xE9\na\n", {"-l", "en_US.ANSI_X3.4-1968"}, 1), "a\nb\xE9\n");
    outcome got = vel_on(text, {"sort-key", "-l", "de_DE", "--list", "2"});
    EXPECT_EQ(got.status, 1);
    expect_parts(got.out, {"~ff\t\xFF\n", "~fe207a\t\xFE z\n"});
    expect_parts(got.err, {"text: line 2, byte 2: FF is", "text: line 3, byte 5: E2 82 is",
                           "1 more invalid sequences"});
}

TEST_F(sort, files_and_standard_input) {
    std::string one = put("one", "ä\nz"), two = put("two", "b\n");
    EXPECT_EQ(shell("printf 'ö\\na\\n' | vel sort -l de_DE " + one + " - " + two).out,
              "a\nä\nb\nö\nz\n");
    EXPECT_EQ(shell("printf 'ö\\na\\n' | vel sort -l de_DE").out, "a\nö\n");
    outcome got = vel({"sort", "-l", "de_DE", one, in_folder("none")});
    EXPECT_EQ(got.status, 1);
    expect_parts(got.err, {"cannot open " + in_folder("none")});
}

TEST_F(sort, keys_and_comparing_have_the_same_order) {
    struct {
        const char *a, *b, *german, *swedish;
    } cases[] = {
        {"Äpfel", "Zebra", "<", ">"},    {"co-op", "coop", "<", "<"}, {"ab", "a", ">", ">"},
        {"Straße", "Strasse", ">", ">"}, {"", "a", "<", "<"},         {"a", "a", "=", "="},
    };
    for (const auto &row : cases) {
        for (const char *locale : {"de_DE", "sv_SE"}) {
            std::string order = locale == std::string("de_DE") ? row.german : row.swedish;
            outcome got = vel({"compare", "-l", locale, row.a, row.b});
            EXPECT_EQ(got.out, std::string(row.a) + " " + order + " " + row.b + "\n") << got.err;
            EXPECT_EQ(got.status, 0);
            std::string lines =
                vel_on(std::string(row.a) + "\n" + row.b + "\n", {"sort-key", "-l", locale}).out;
            size_t end = lines.find('\n') + 1;
            int keys = lines.substr(0, lines.find('\t'))
                           .compare(lines.substr(end, lines.find('\t', end) - end));
            EXPECT_EQ(keys < 0 ? "<" : keys > 0 ? ">" : "=", order) << locale << " " << lines;
        }
    }
    outcome got = vel({"compare", "-l", "de_DE", "a\xFF", "a"});
    EXPECT_EQ(got.status, 1);
    expect_parts(got.err, {"byte 1: FF is no character"});
}

TEST_F(sort, failures_of_the_sort_program_and_usage) {
    std::string text = put("many", repeated("some line\nanother line\n", 40000));
    std::filesystem::create_directory(in_folder("tmp"));
    const std::string temporary = "TMPDIR=" + in_folder("tmp");
    std::vector<std::string> command = {"sort", "-l", "de_DE", "--memory", "1K", text};
    struct {
        std::string variable, message;
    } cases[] = {{"PATH=/none", "cannot start the program 'sort'"},
                 {temporary + "/none", "the program 'sort' ended with status"}};
    for (const auto &row : cases) {
        outcome got = vel(command, {row.variable});
        EXPECT_EQ(got.status, 1);
        EXPECT_EQ(got.out, "");
        expect_parts(got.err, {row.message});
    }
    outcome cut = shell("vel sort -l de_DE --memory 1K " + text + " | head -n 1", {temporary});
    EXPECT_EQ(cut.out, "another line\n") << cut.err;
    EXPECT_TRUE(std::filesystem::is_empty(in_folder("tmp")));
    const std::vector<std::string> wrong[] = {
        {"-k", "0"}, {"-t", "ab", "-k", "1"}, {"--memory", "much"}};
    for (std::vector<std::string> arguments : wrong) {
        arguments.insert(arguments.begin(), {"sort", "-l", "C"});
        EXPECT_EQ(vel(arguments).status, 2) << arguments[3];
    }
}

} // namespace
