// vel charmap: grids for a terminal, and the page.
#include "vel/runner.h"

namespace {

using namespace vel_test;

class charmap : public vel_tool_test {
protected:
    std::string page(std::vector<std::string> arguments) {
        std::string file = in_folder("page.html");
        arguments.insert(arguments.end(), {"--html", file});
        outcome got = vel(arguments);
        EXPECT_EQ(got.status, 0) << got.err;
        return content_of(file);
    }
};

TEST_F(charmap, grids) {
    const std::string none = " ···", lead = " »»»";
    struct {
        std::vector<std::string> arguments;
        std::vector<std::string> parts;
    } cases[] = {
        {{"latin1"},
         {"    _0  _1  _2", "\n0_ NUL SOH STX", "\n4_  @   A ", "\nA_ NBS  ¡ ", " SHY  ®",
          "  þ   ÿ\n"}},
        {{"ascii"}, {"\n8_" + repeated(none, 16) + "\n", "··· no character"}},
        // Two columns, and half-width ones.
        {{"sjis"},
         {"\n9_" + repeated(lead, 16) + "\n", " ｡   ｢ ", "begin with 81-84 88-9F E0-EA: see"}},
        {{"sjis", "--lead", "82"},
         {"\n82 4_" + repeated(none, 15) + " ０\n", "\n82 A_ あ  ぃ  い ",
          "\n82 F_ を  ん " + none}},
        {{"eucjp", "--lead", "8fB0"}, {"8F B0 A_" + none + " 丂  "}},
        {{"utf8", "--lead", "CC"}, {"CC 8_  ◌̀   ◌́  "}},
        {{"ibm037"}, {"\nC_  {   A   B "}},
        {{"cp949", "--lead", "all"}, {"\n\n       _0", "\n81 4_" + none + " 갂  갃 ", " 가  각 "}},
    };
    for (auto &row : cases) {
        row.arguments.insert(row.arguments.begin(), "charmap");
        outcome got = vel(row.arguments);
        EXPECT_EQ(got.status, 0) << got.err;
        expect_parts(got.out, row.parts);
        EXPECT_EQ(got.out.find("\x1b["), got.out.npos);
    }
    std::string coloured = vel({"--color", "always", "charmap", "ascii"}).out;
    EXPECT_NE(coloured.find("\x1b[2mNUL\x1b[0m"), coloured.npos);
}

TEST_F(charmap, page_holds_everything) {
    std::string text = page({"charmap", "sjis"});
    expect_parts(text, {"<title>SHIFT_JIS</title>", "prefers-color-scheme: dark", "sjis",
                        "\n\"82\":[[79,[65296],\"\\u003cUFF10>", "[\"\",\"81\",\"82\"", ",[129],",
                        "[65,[65],\"\\u003cA> \\u003cU0041>"});
    for (const char *outside : {"http:", "https:", "src=", "@import", "url("}) {
        EXPECT_EQ(text.find(outside), text.npos) << outside;
    }
    // No name ends the script.
    size_t data = text.find("const chart"), code = text.find("const byId");
    EXPECT_EQ(text.substr(data, code - data).find('<'), text.npos);
    text = page({"charmap", "gb18030", "--lead", "8130"});
    expect_parts(text, {"leads: [\"8130\",\"813081\"", "\"813081\":[[48,[128]"});
}

TEST_F(charmap, what_is_not_there) {
    const telling cases[] = {
        {1, {"nope"}, {"unknown code set 'nope'"}},
        {1,
         {"sjis", "--lead", "41"},
         {"no longer character of SHIFT_JIS begins with 41: lead bytes"}},
        {1, {"latin1", "--lead", "81"}, {"all have one byte"}},
        {2, {"sjis", "--lead", "8"}, {"'8' is no lead"}},
        {1, {"sjis", "--html", in_folder("none/page")}, {"cannot write beside"}},
        {1, {"utf8", "--data", "/none"}, {"/none/vels/cm3/e01c.cmo"}},
    };
    expect_told({"charmap"}, cases);
}

} // namespace
