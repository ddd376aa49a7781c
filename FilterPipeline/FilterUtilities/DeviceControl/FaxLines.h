#pragma once

class CXString;
class JobQuestions;

/// A fax job, as PJL comments.
namespace FaxLines {

/// Of at most so many recipients.
inline constexpr unsigned int mostRecipients = 10000;

void Append(CXString& pjl, const JobQuestions& job);

} // namespace FaxLines
