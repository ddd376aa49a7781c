#pragma once

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <string>

/// Builds the texts for the device: PJL lines and PostScript snippets. Literals stand as the device wants
/// them.
namespace InstructionText {

/// Appends texts and units, one behind the other.
template <typename... Pieces>
void Append(CXString& text, const Pieces&... pieces) {
    (static_cast<void>(text += pieces), ...);
}

inline CXString Decimal(long long value) { return CXString(std::to_wstring(value).c_str()); }

/// A PostScript command in the frame that lets the interpreter give up a failing feature without losing the
/// job. Option and feature stand as they are, blanks and line feeds too.
inline void AppendSnippet(CXString& text, const auto& command, const auto& option, const auto& feature) {
    Append(text, L"\nfeaturebegin{\n%%BeginFeature: *", feature, L' ', option, L"\n\t", command,
           L"\n%%EndFeature\n}featurecleanup\n");
}

} // namespace InstructionText
