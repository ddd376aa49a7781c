// The typed formatter: what each specification makes of each kind of argument, what it refuses and with which
// words, where the text stands at the edge of the in-place area, and what the safe worker leaves behind.

#include "Support/ReportRecorder.h"
#include "Support/Rows.h"

#include <LowLevelFacilities/Formatter/CPFormat.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <windows.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <locale>
#include <new>
#include <ostream>
#include <stdexcept>

namespace {

using InternalOrvelCP::FormatBuffer;
using InternalOrvelCP::formatWorkerMayThrow;

struct Streamed {
    int value;
};
std::ostream& operator<<(std::ostream& stream, const Streamed& streamed) {
    SetLastError(5);
    return stream << "<" << streamed.value << ">";
}

template <typename Exception>
struct Throws {
    Exception exception;
};
template <typename Exception>
std::ostream& operator<<(std::ostream&, const Throws<Exception>& thrower) {
    throw thrower.exception;
}

struct GroupsDigits : std::numpunct<char> {
    char do_thousands_sep() const override { return '\''; }
    std::string do_grouping() const override { return "\3"; }
};

enum Plain { PlainOne = 1 };
enum class Scoped : unsigned char { Big = 200 };

template <typename... Arguments>
std::string format(const char* format, const Arguments&... arguments) {
    FormatBuffer buffer;
    formatWorkerMayThrow(buffer, format, arguments...);
    return std::string(buffer.text(), buffer.used());
}

/// The exception's type and message, or "none".
std::string failureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const CPException& failure) {
        return failure.getExceptionType() + ": " + failure.getExceptionMessage();
    }
    return "none";
}

TEST(Formatter, FormatsAsTheRuntimeDoes) {
    // With snprintf as the judge; the typed formatter needs no length modifiers, but takes them.
    const auto check = [](const char* specification, auto value) {
        char expected[512];
        std::snprintf(expected, sizeof expected, specification, value);
        EXPECT_EQ(expected, format(specification, value)) << specification;
    };
    for (const char* specification : {"%d", "%u", "%x", "%X", "%o", "%-5d|", "%05d", "%+d", "% d", "%#x",
                                      "%8.3d", "%hhd", "%hu", "%hhx", "%12d", "%08X", "%-05d|", "%-9o|"})
        for (const int value : {0, -1, 42, 65535, INT_MAX, INT_MIN})
            check(specification, value);
    for (const char* specification : {"%lld", "%llu", "%20lld", "%llo"})
        for (const long long value : {0LL, -1LL, LLONG_MAX, LLONG_MIN})
            check(specification, value);
    for (const char* specification :
         {"%f", "%e", "%G", "%10.3f", "%-10g|", "%+.0f", "%a", "%.f", "%010.2f", "%-9.1f|", "%.17f", "%.30f"})
        for (const double value : {0.0, -0.0, -2.25, 2.675, 0.5, 1e300, 1e-300, 123456789012345.6, -1e15,
                                   static_cast<double>(INFINITY), static_cast<double>(NAN)})
            check(specification, value);
    check("%zu", sizeof(int));
    check("%p", static_cast<const void*>(&check));
}

TEST(Formatter, LetsTheTypeOfTheArgumentDecide) {
    const wchar_t* const nullWide = nullptr;
    const char* const nullNarrow = nullptr;
    const std::string_view view = std::string_view("abcdef").substr(0, 2);
    const Rows<std::string, const char*> rows{
        {format("%s|%S|%s", "narrow", "narrow", L"wide"), "narrow|narrow|wide"},
        {format("%ls|%S", L"wide", L"wide"), "wide|wide"},
        {format("%s", CXString(L"caf\u00E9 \xD83D\xDE00")), "caf\xC3\xA9 \xF0\x9F\x98\x80"},
        {format("%s%s", CPString("utf8"), std::wstring(L"wide")), "utf8wide"},
        {format("%s|%S", nullNarrow, nullWide), "(null)|(null)"},
        {format("%6s|%-6s|%.2s", L"ab", "ab", L"abc"), "    ab|ab    |ab"},
        {format("%.2s", L"a\u00E9"), "a"}, // a cut never leaves half a character
        {format("%S|%5s|%s", 4000000000u, -1, 1.5), "4000000000|   -1|1.5"},
        {format("%s|%6s", Streamed{7}, Streamed{7}), "<7>|   <7>"},
        {format("%c%c%C", 'a', 98, L'\u00E9'), "ab\xC3\xA9"},
        {format("%lc|%3lc|%lc", 0x20AC, L'\u20AC', 'a'), "\xE2\x82\xAC|\xE2\x82\xAC|a"},
        // A view ends at its length, with or without a width.
        {format("%s|%3s|%-3s|%.1s|%.9s", view, view, view, view, view), "ab| ab|ab |a|ab"},
        {format("%5.3s|%-5.2s|", L"\u20ACab", std::string("\xC3\xA9z")), "  \xE2\x82\xAC|\xC3\xA9   |"},
        {format("%.3S|%.4s", L"\xD83D\xDE00", L"\xD83D\xDE00x"), "|\xF0\x9F\x98\x80"},
        {format("%d %d %d", PlainOne, Scoped::Big, true), "1 200 1"},
        {format("%d|%u|%x", static_cast<unsigned char>(255), static_cast<signed char>(-1),
                static_cast<short>(-1)),
         "255|4294967295|ffffffff"},
        {format("%.1f", 2), "2.0"},
        {format("%I64d %Iu", 1LL << 40, sizeof(char)), "1099511627776 1"},
        {format("%%%d%%", 5), "%5%"},
        {format(""), ""},
    };
    for (const auto& [actual, expected] : rows)
        EXPECT_EQ(expected, actual);
    EXPECT_EQ(3u, format("%s", std::string("a\0b", 3)).size());
}

TEST(Formatter, RefusesWhatDoesNotFit) {
    const std::string star =
        "CPExceptionInvalidArgument: The InternalOrvelCP::formatWorkerMayThrow() family of methods does not "
        "support the '*' character for the precision or width in a printf-style format specification.";
    const std::string nonIntegral = "CPExceptionInvalidArgument: Non-integral value supplied as integral "
                                    "argument to format string character: ";
    const std::string missing =
        "CPExceptionInvalidArgument: Invalid format string: missing arguments. There's no argument "
        "corresponding to the current format specifier, ";
    const std::string extra =
        "CPExceptionTooManyArguments: Extra arguments provided to formatWorkerMayThrow(). There's no format "
        "specifier corresponding to this argument in the original format string: ";
    const Rows<std::function<void()>, std::string> rows{
        {[] { format("%*d", 5, 1); }, star},
        {[] { format("%.*s", 5, "a"); }, star},
        {[] { format("%*d"); }, missing + "%*d"},
        {[] { format("%s"); }, missing + "%s"},
        {[] { format("a %d b %5.2f c", 1); }, missing + "%5.2f c"},
        {[] { format("%d", 1.5); }, nonIntegral + "d"},
        {[] { format("%u", L"text"); }, nonIntegral + "u"},
        {[] { format("%i", Streamed{1}); }, nonIntegral + "i"},
        {[] { format("done", 1); }, extra + "done"},
        {[] { format("%d of %d", 1, 2, 3); }, extra + "%d of %d"},
    };
    for (const auto& [action, expected] : rows)
        EXPECT_EQ(expected, failureOf(action));
    for (const char* malformed :
         {"%", "%5", "%.", "%l", "%y", "%n", "%d %", "%100000d", "%.100000f", "%99999999999999999999d",
          "%0000000000000000000000000000000000000000000000000000000005d"}) {
        const std::string failure = failureOf([malformed] { format(malformed, 1, 1); });
        EXPECT_TRUE(failure.starts_with("CPExceptionInvalidArgument: Invalid format string: ")) << malformed;
    }
}

TEST(Formatter, WritesNumbersWithoutTheLocaleOfTheProcess) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new GroupsDigits));
    const std::string text = format("%s %s %d", Streamed{1234567}, 1234.5, 1234567);
    std::locale::global(before);
    EXPECT_EQ("<1234567> 1234.5 1234567", text);
}

TEST(Formatter, KeepsShortTextInPlaceAndMovesLongTextOut) {
    for (const std::size_t length : {0u, 1022u, 1023u, 1024u, 5000u}) {
        const std::string text(length, 'x');
        FormatBuffer once;
        formatWorkerMayThrow(once, "%s", text);
        FormatBuffer inPieces;
        for (std::size_t i = 0; i < length; ++i)
            formatWorkerMayThrow(inPieces, "%c", 'x');
        FormatBuffer wide;
        formatWorkerMayThrow(wide, "%s", CXString(text.c_str()));
        for (FormatBuffer* buffer : {&once, &inPieces, &wide}) {
            EXPECT_EQ(length > 1022, buffer->hasMovedOut()) << length;
            EXPECT_EQ(length, buffer->used());
            EXPECT_EQ(length, std::strlen(buffer->text())); // terminated in both modes
            EXPECT_EQ(text, buffer->takeText());
        }
    }
}

TEST(Formatter, WritesThroughTheRuntimeAtEveryFillOfTheArea) {
    // Room left for the runtime's formatter shrinks to nothing and beyond.
    for (const std::size_t filled : {766u, 767u, 768u, 1021u, 1022u, 1023u, 3000u}) {
        for (const int width : {1, 255, 256, 257, 1023, 1024, 4000}) {
            const std::string head(filled, 'h');
            const std::string specification = "%s%" + std::to_string(width) + "d!";
            const std::string expected = head + std::string(static_cast<std::size_t>(width - 1), ' ') + "7!";
            EXPECT_EQ(expected, format(specification.c_str(), head, 7)) << filled << "," << width;
        }
    }
}

TEST(SafeFormatter, ReportsAFailureAndKeepsWhatItHas) {
    const std::string issue = ": Issue with arguments or this format string: '%s%s'.\n\n";
    const Rows<std::function<std::string()>, const char*, std::string> rows{
        {[] { return FormatStdString("%s%s", 3); }, "3",
         "CPExceptionInvalidArgument" + issue +
             "Invalid format string: missing arguments. There's no "
             "argument corresponding to the current format specifier, %s"},
        {[] { return FormatStdString("%s%s", "a", Throws<int>{}); }, "a", "<unknown>" + issue + "<none>"},
        {[] { return FormatStdString("%s%s", Throws<std::bad_alloc>{}); }, "",
         "<unknown>" + issue + "bad allocation"},
        {[] { return FormatStdString("%s%s", Throws<std::runtime_error>{std::runtime_error("why")}); }, "",
         "<unknown>" + issue + "why"},
        {[] { return FormatStdString(nullptr, 1); }, "",
         "CPExceptionInvalidArgument: A null format string was supplied!\n\nInvalid format string: a "
         "null format string was supplied."},
    };
    for (const auto& [action, result, report] : rows) {
        const ReportRecorder recorder;
        SetLastError(77);
        EXPECT_EQ(result, action());
        EXPECT_EQ(77u, GetLastError());
        ASSERT_EQ(1u, recorder.reports().size());
        EXPECT_EQ("Caught " + report, recorder.reports()[0].text);
        EXPECT_EQ("SafeFormatWorker() Error", recorder.reports()[0].caption);
    }
}

TEST(SafeFormatter, LeavesTheLastErrorAloneOnSuccess) {
    SetLastError(1234);
    EXPECT_EQ("1.500 x<7>", FormatStdString("%.3f %s%s", 1.5, L"x", Streamed{7}));
    EXPECT_EQ(1234u, GetLastError());
}

} // namespace
