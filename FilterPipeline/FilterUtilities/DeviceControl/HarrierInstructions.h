#pragma once

class CXString;
class JobQuestions;
class ProductPdlData;

/// The instructions of the Harrier family: job handling in PJL words of its own, colour by the product's
/// commands, covers.
namespace HarrierInstructions {

/// Appends to the first two. filterDoesColorCorrection: the pages come with their colours corrected, so that
/// the device does no more than it does by itself.
void Generate(CXString& pjl, CXString& setup, const JobQuestions& job, const ProductPdlData& product,
              bool filterDoesColorCorrection);

/// A colour correction of the user's own.
void AppendCustomColor(CXString& text, const JobQuestions& job);

} // namespace HarrierInstructions
