#pragma once

#include "Support/TemporaryFolder.h"

#include <DeviceStream/DevicePrologue.h>

#include <array>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

/// Many pieces of PostScript run by Ghostscript in one process behind the sample's prologue, each between
/// save and restore.
class InterpreterRun {
public:
    /// check: PostScript that leaves whether the piece did what it should. It may call `device` (key ->
    /// value) for an entry of the page device, and `same` (a b -> bool), which compares dictionaries and
    /// arrays by what is in them. prelude: PostScript that stands before the piece.
    void Add(std::string name, const std::string& piece, const std::string& check,
             const std::string& prelude = {}) {
        m_program += "(@" + std::to_string(m_names.size()) +
                     "\n) print flush /saved save def /depth countdictstack def\n" + prelude + "\n(below)\n" +
                     piece + "\ncount 1 eq {(below) eq} {false} ifelse countdictstack depth eq and " +
                     "not {(the stacks are not as they were\n) print} if clear\n{" + check +
                     "} stopped {clear (the check cannot be run\n) print} "
                     "{not {(the device did not get it\n) print} if} ifelse clear saved restore\n";
        m_names.push_back(std::move(name));
    }

    /// The pieces that failed, each with what was said; empty where all went well.
    std::vector<std::string> Failures() const {
        const TemporaryFolder folder;
        const auto file = folder.Write("pieces.ps", "%!PS\n" + std::string(Samples::devicePrologue) + words +
                                                        m_program + "(@end\n) print flush\n");
        return FailuresIn(
            OutputOf("gs -q -dNOPAUSE -dBATCH -dSAFER -sDEVICE=nullpage " + file.string() + " 2>&1"));
    }

private:
    static constexpr const char* words = R"PS(
/device {currentpagedevice exch get} def
/same {
  dup type /dicttype eq
  {samedictionary}
  {dup type /arraytype eq {samearray} {eq} ifelse} ifelse
} def
/samedictionary {
  1 index type /dicttype ne {pop pop false} {
    2 copy length exch length ne {pop pop false} {
      true exch {
        3 index 2 index known
        {3 index 3 -1 roll get exch same and}
        {pop pop pop false} ifelse
      } forall
      exch pop
    } ifelse
  } ifelse
} def
/samearray {
  1 index type /arraytype ne {pop pop false} {
    2 copy length exch length ne {pop pop false} {
      true 0 1 3 index length 1 sub {
        3 index 1 index get
        3 index 2 index get
        same exch pop and
      } for
      exch pop exch pop
    } ifelse
  } ifelse
} def
)PS";

    static std::string OutputOf(const std::string& command) {
        std::FILE* const pipe = popen(command.c_str(), "r");
        if (pipe == nullptr) return "cannot be run: " + command;
        std::string output;
        std::array<char, 4096> part;
        while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe))
            output.append(part.data(), count);
        if (const int status = pclose(pipe); status != 0)
            output += "ended with " + std::to_string(status) + "\n";
        return output;
    }

    std::vector<std::string> FailuresIn(const std::string& output) const {
        std::vector<std::string> failures;
        std::string at = "at the start";
        bool isAtEnd = false;
        std::istringstream lines(output);
        for (std::string line; std::getline(lines, line);) {
            if (line == "@end")
                isAtEnd = true;
            else if (line.starts_with('@'))
                at = m_names.at(std::stoul(line.substr(1)));
            else
                failures.push_back(std::string(at).append(": ").append(line));
        }
        if (!isAtEnd) failures.push_back(at + ": the interpreter did not come further");
        return failures;
    }

    std::string m_program;
    std::vector<std::string> m_names;
};
