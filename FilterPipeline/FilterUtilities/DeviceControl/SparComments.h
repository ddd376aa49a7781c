#pragma once

#include <string_view>

class CXString;
class JobQuestions;

/// Comments that tell the device which application a job comes from.
namespace SparComments {

/// Appends them, each line behind the prefix that makes it a comment; nothing where no application is known.
void Append(CXString& text, std::wstring_view prefix, const JobQuestions& job);

inline constexpr std::wstring_view pjl = L"@PJL COMMENT ";
inline constexpr std::wstring_view postScript = L"%%";

} // namespace SparComments
