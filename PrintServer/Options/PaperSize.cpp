#include "Options/PaperSize.h"

#include <cups/cups.h>

#include <cstdlib>

namespace OvPrintServer {

namespace {

constexpr long nearEnough = 500;           // microns
constexpr long largestPwgSize = 1'000'000; // ten metres: what is larger is no paper

// People write "a5" for A5, and "letter" for Letter.
std::string Capitalised(std::string name) {
    if (!name.empty() && name.front() >= 'a' && name.front() <= 'z')
        name.front() = static_cast<char>(name.front() - 32);
    return name;
}

} // namespace

std::optional<PaperSize> FindPaperSize(const std::string& name) {
    const pwg_media_t* media = pwgMediaForPWG(name.c_str());
    if (media == nullptr) media = pwgMediaForPPD(name.c_str());
    if (media == nullptr) media = pwgMediaForPPD(Capitalised(name).c_str());
    if (media == nullptr) media = pwgMediaForLegacy(name.c_str());
    if (media == nullptr || media->width <= 0 || media->length <= 0 || media->width > largestPwgSize ||
        media->length > largestPwgSize)
        return {};
    return PaperSize{media->width * micronsOfPwgUnit, media->length * micronsOfPwgUnit};
}

const OfferedOption* FindPaper(const OfferedFeature& feature, const PaperSize& size) {
    for (const OfferedOption& option : feature.options) {
        const auto width = option.Number("MediaSizeWidth");
        const auto height = option.Number("MediaSizeHeight");
        if (width && height && std::labs(*width - size.width) <= nearEnough &&
            std::labs(*height - size.height) <= nearEnough)
            return &option;
    }
    return nullptr;
}

} // namespace OvPrintServer
