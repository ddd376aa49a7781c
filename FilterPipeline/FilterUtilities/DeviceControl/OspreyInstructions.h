#pragma once

class CXString;
class JobQuestions;

/// The instructions of the Osprey family: monochrome, with fax jobs, jobs for later and jobs held at the
/// device.
namespace OspreyInstructions {

/// Appends to both.
void Generate(CXString& pjl, CXString& setup, const JobQuestions& job);

} // namespace OspreyInstructions
