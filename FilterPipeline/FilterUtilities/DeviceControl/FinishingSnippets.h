#pragma once

class CXString;
class JobQuestions;

/// PostScript for stapling, punching, booklets and folds, for the families that have them in common.
namespace FinishingSnippets {

/// Appends staple, punch, booklet and fold, in this order. Staple and punch are there also where nothing is
/// asked for.
void Append(CXString& setup, const JobQuestions& job, bool isPortrait);

} // namespace FinishingSnippets
