#pragma once

class CXString;
class JobQuestions;

/// The instructions of small devices built around another maker's controller: that controller's PJL words,
/// and for PCLm its page ticket.
namespace LowEndInstructions {

void GeneratePostScript(CXString& pjl, const JobQuestions& job);
void GeneratePcl6(CXString& pjl, const JobQuestions& job);
void GeneratePclm(CXString& pjl, CXString& pageTicket, const JobQuestions& job);

} // namespace LowEndInstructions
