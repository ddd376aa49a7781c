#pragma once

class CXString;
class JobQuestions;

/// Comments that tell the device which application a job comes from.
namespace SparComments {

/// Appends them, each line behind the prefix that makes it a comment; nothing where no application is known.
void Append(CXString& text, const wchar_t* prefix, const JobQuestions& job);

inline constexpr const wchar_t* pjl = L"@PJL COMMENT ";
inline constexpr const wchar_t* postScript = L"%%";

} // namespace SparComments
