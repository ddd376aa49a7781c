#include "Support/Rows.h"

#include <Job/FilterJob.h>
#include <Job/InputKind.h>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace OvPrintServer;

namespace {

std::string Said(const std::function<void(ServerLines&)>& say) {
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    {
        ServerLines lines(ends[1]);
        say(lines);
    }
    close(ends[1]);
    std::string said;
    char chunk[4096];
    for (ssize_t size = 0; (size = read(ends[0], chunk, sizeof chunk)) > 0;)
        said.append(chunk, static_cast<std::size_t>(size));
    close(ends[0]);
    return said;
}

TEST(ServerLinesTest, WhateverIsSaidIsOneLineOfItsKind) {
    EXPECT_EQ("INFO: a\\nERROR: b\\x1b[2J\n",
              Said([](ServerLines& lines) { lines.Info("a\nERROR: b\x1b[2J"); }));
    EXPECT_EQ("PAGE: 3 2\nSTATE: +x\nSTATE: -x\n", Said([](ServerLines& lines) {
                  lines.Page(3, 2);
                  lines.State(true, "x");
                  lines.State(false, "x");
              }));
    std::string wide; // of characters of four bytes
    for (int i = 0; i < 10'000; ++i)
        wide += "\U0001f5a8";
    for (const std::string& text : {std::string(100'000, '\xff'), wide}) {
        const std::string longest = Said([&](ServerLines& lines) { lines.Error(text); });
        EXPECT_GT(2048U, longest.size()); // the server's own bound
        EXPECT_EQ(longest.size() - 1, longest.find('\n'));
    }
}

TEST(FilterArgumentsTest, AreThoseOfAFilter) {
    const FilterArguments read = ReadFilterArguments({"7", "anna", "A job", "2", "sides=one-sided", "/job"});
    EXPECT_EQ(7U, read.id);
    EXPECT_EQ(2U, read.copies);
    EXPECT_EQ("/job", read.file);
    EXPECT_EQ("", ReadFilterArguments({"7", "anna", "A job", "2", ""}).file);
    for (const auto& wrong : std::vector<std::vector<std::string>>{{},
                                                                   {"7", "a", "b", "1"},
                                                                   {"7", "a", "b", "1", "", "f", "g"},
                                                                   {"x", "a", "b", "1", ""},
                                                                   {"7", "a", "b", "-1", ""},
                                                                   {"7", "a", "b", "99999999999", ""},
                                                                   {"7", "a", "b", "", ""}})
        EXPECT_THROW(ReadFilterArguments(wrong), std::invalid_argument);
}

TEST(InputKindTest, TheFirstBytesTell) {
    for (const auto& [bytes, kind] :
         Rows<std::string, InputKind>{{"PK\x03\x04rest", InputKind::Package},
                                      {"PK\x05\x06", InputKind::Package}, // an empty one
                                      {"%PDF-1.7", InputKind::Pdf},
                                      {std::string(500, ' ') + "%PDF-", InputKind::Pdf},
                                      {std::string(1020, ' ') + "%PDF-", InputKind::Unknown},
                                      {"%!PS-Adobe", InputKind::Unknown},
                                      {"PK", InputKind::Unknown},
                                      {"", InputKind::Unknown}})
        EXPECT_EQ(kind, KindOfInput(bytes)) << bytes.substr(0, 10);
}

} // namespace
