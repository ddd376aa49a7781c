#pragma once

class CXString;
class JobQuestions;

/// A job's covers, as PJL comments.
namespace CoverLines {

/// Nothing for a job without covers, nor where the device gets them in the ticket.
void Append(CXString& pjl, const JobQuestions& job);

} // namespace CoverLines
