#pragma once

#include <string_view>

class CXString;
class JobQuestions;

/// PJL for the families that have words of their own for job handling.
namespace JobHandlingLines {

/// Appends the job type and the names of job and user. A personal saved job may have another name.
/// normalPrint: the line of a job that is none of the special ones.
void Append(CXString& pjl, const JobQuestions& job, std::wstring_view normalPrint);

} // namespace JobHandlingLines
