#pragma once

#include "Queue/QueueOffer.h"

#include <optional>
#include <string>

namespace OvPrintServer {

inline constexpr long micronsOfPwgUnit = 10; // which is a hundredth of a millimetre

/// A paper's size, in microns.
struct PaperSize {
    long width = 0;
    long height = 0;
};

/// The size that a name stands for: of IPP ("iso_a4_210x297mm"), of PPDs ("A4", "Custom.100x200mm") or an old
/// one ("na-letter"). Nothing for any other name.
std::optional<PaperSize> FindPaperSize(const std::string& name);

/// The option of the feature whose paper has the size, within half a millimetre; null where there is none.
const OfferedOption* FindPaper(const OfferedFeature& feature, const PaperSize& size);

} // namespace OvPrintServer
