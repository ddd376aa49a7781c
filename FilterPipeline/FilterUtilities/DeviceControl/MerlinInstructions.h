#pragma once

class CXString;
class JobQuestions;

/// The instructions of the Merlin family: nothing but PJL, in the PCL 6 form also for covers and stapling.
namespace MerlinInstructions {

void GeneratePostScript(CXString& pjl, const JobQuestions& job);
/// With the comments on the application at its top.
void GeneratePcl6(CXString& pjl, const JobQuestions& job);

} // namespace MerlinInstructions
