#pragma once

class CXString;
class JobQuestions;
class ProductPdlData;

/// The instructions of the Kestrel family: a PJL header of job attributes, and PostScript snippets for
/// finishing, trapping and colour.
namespace KestrelInstructions {

/// Appends to the first two.
void Generate(CXString& pjl, CXString& setup, const JobQuestions& job, const ProductPdlData& product);

} // namespace KestrelInstructions
