#include "Options/OptionTable.h"

#include <algorithm>
#include <iterator>

namespace OvPrintServer {

namespace {

constexpr OptionWord sides[] = {
    {"one-sided", "OneSided"},
    {"two-sided-long-edge", "TwoSidedLongEdge"},
    {"two-sided-short-edge", "TwoSidedShortEdge"},
};

constexpr OptionWord duplex[] = {
    {"None", "OneSided"},
    {"DuplexNoTumble", "TwoSidedLongEdge"},
    {"DuplexTumble", "TwoSidedShortEdge"},
};

// The driver's grey is the ticket's Monochrome.
constexpr OptionWord colors[] = {
    {"color", "Color"},
    {"auto", "Color"},
    {"auto", "Monochrome"},
    {"monochrome", "Monochrome"},
    {"monochrome", "Grayscale"},
    {"auto-monochrome", "Monochrome"},
    {"auto-monochrome", "Grayscale"},
    {"process-monochrome", "Grayscale"},
    {"process-monochrome", "Monochrome"},
    {"bi-level", "Monochrome"},
    {"process-bi-level", "Monochrome"},
};

constexpr OptionWord colorModels[] = {
    {"RGB", "Color"},      {"CMYK", "Color"},          {"Color", "Color"},          {"Gray", "Monochrome"},
    {"Gray", "Grayscale"}, {"Grayscale", "Grayscale"}, {"Grayscale", "Monochrome"}, {"Black", "Monochrome"},
};

constexpr OptionWord qualities[] = {{"draft", "Draft"}, {"normal", "Normal"}, {"high", "High"}};

constexpr OptionWord qualityLevels[] = {
    {"draft", "fast-draft"}, {"draft", "toner-saver"},    {"draft", "high-speed"},
    {"normal", "standard"},  {"high", "highest-quality"}, {"high", "enhanced"},
};

constexpr OptionWord orientations[] = {
    {"portrait", "Portrait"},
    {"landscape", "Landscape"},
    {"reverse-landscape", "ReverseLandscape"},
    {"reverse-portrait", "ReversePortrait"},
};

constexpr OptionWord layouts[] = {
    {"lrtb", "RightBottom"},
    {"tblr", "BottomRight"},
    {"rltb", "LeftBottom"},
    {"tbrl", "BottomLeft"},
    {"lrbt", "RightTop"},
    {"btlr", "TopRight"},
    {"rlbt", "LeftTop"},
    {"btrl", "TopLeft"},
    {"toright-tobottom", "RightBottom"},
    {"tobottom-toright", "BottomRight"},
    {"toleft-tobottom", "LeftBottom"},
    {"tobottom-toleft", "BottomLeft"},
    {"toright-totop", "RightTop"},
    {"totop-toright", "TopRight"},
    {"toleft-totop", "LeftTop"},
    {"totop-toleft", "TopLeft"},
};

constexpr OptionWord scalings[] = {
    {"none", "None"},
    {"fit", "FitApplicationMediaSizeToPageImageableSize"},
    {"fill", "FitApplicationMediaSizeToPageMediaSize"},
    {"auto-fit", "FitApplicationMediaSizeToPageImageableSize"},
};

constexpr OptionWord fitting[] = {{"true", "FitApplicationMediaSizeToPageImageableSize"}, {"false", "None"}};
constexpr OptionWord mirroring[] = {{"true", "MirrorImageWidth"}, {"false", "None"}};
constexpr OptionWord turning[] = {{"true", "Landscape"}, {"false", "Portrait"}};
constexpr OptionWord collating[] = {{"true", "Collated"}, {"false", "Uncollated"}};

constexpr OptionWord handling[] = {
    {"separate-documents-collated-copies", "Collated"},
    {"separate-documents-uncollated-copies", "Uncollated"},
    {"single-document", "Collated"},
};

constexpr OptionWord intents[] = {
    {"perceptual", "Photographs"},        {"saturation", "BusinessGraphics"},
    {"relative", "RelativeColorimetric"}, {"relative-bpc", "RelativeColorimetric"},
    {"absolute", "AbsoluteColorimetric"},
};

constexpr OptionWord mediaSources[] = {
    {"auto", "AutoSelect"},       {"automatic", "AutoSelect"},
    {"manual", "Manual"},         {"by-pass-tray", "Manual"},
    {"bypass-tray", "Manual"},    {"main", "tray-1"},
    {"main", "Cassette"},         {"top", "tray-1"},
    {"middle", "tray-2"},         {"bottom", "tray-3"},
    {"envelope", "EnvelopeFeed"},
};

constexpr OptionWord mediaTypes[] = {
    {"auto", "AutoSelect"},
    {"stationery", "Plain"},
    {"stationery-letterhead", "Letterhead"},
    {"stationery-bond", "Bond"},
    {"stationery-preprinted", "stationery-pre-printed"},
    {"stationery-prepunched", "stationery-pre-punched"},
    {"stationery-coated", "stationery-glossy"},
    {"photographic-semi-gloss", "PhotographicSemiGloss"},
    {"labels", "Label"},
    {"envelope", "EnvelopePlain"},
};

constexpr OptionWord outputBins[] = {
    {"auto", "AutoSelect"},
    {"automatic", "AutoSelect"},
    {"center", "CenterTray"},
    {"top", "CenterTray"},
};

// The printer keeps a job for as long as somebody wants; of times, the server knows.
constexpr OptionWord holding[] = {{"indefinite", "hold-job"}};

constexpr OptionWord punching[] = {{"None", "None"}};

using enum How;
using enum Vocabulary;

// clang-format off
constexpr OptionRow rows[] = {
    {"sides",                      Ipp, Choice, "JobDuplexAllDocumentsContiguously", sides},
    {"media",                      Ipp, Media, {}, {}},
    {"media-col",                  Ipp, MediaCol, {}, {}},
    {"media-source",               Ipp, Choice, mediaSourceFeature, mediaSources},
    {"media-type",                 Ipp, Choice, mediaTypeFeature, mediaTypes},
    {"media-color",                Ipp, Choice, mediaColorFeature, {}},
    {"print-color-mode",           Ipp, Choice, "PageOutputColor", colors, fillerOfQueue},
    {"output-mode",                Ipp, Choice, "PageOutputColor", colors},
    {"print-quality",              Ipp, Choice, "PageOutputQuality", qualities},
    {"print-quality",              Ipp, Setting, "print-quality-level", qualityLevels},
    {"printer-resolution",         Ipp, Resolution, "PageResolution", {}},
    {"finishings",                 Ipp, Finishings, {}, {}, "none"},
    {"output-bin",                 Ipp, Choice, "JobOutputBin", outputBins},
    {"number-up",                  Ipp, PagesPerSheet, "JobNUpAllDocumentsContiguously", {}, "1"},
    {"number-up-layout",           Ipp, Choice, "JobNUpAllDocumentsContiguously/PresentationDirection", layouts},
    {"presentation-direction-number-up", Ipp, Choice, "JobNUpAllDocumentsContiguously/PresentationDirection", layouts},
    {"page-ranges",                Ipp, Pages, {}, {}},
    {"orientation-requested",      Ipp, Choice, "PageOrientation", orientations, "none"},
    {"multiple-document-handling", Ipp, Choice, "JobCollateAllDocuments", handling},
    {"multiple-document-handling", Ipp, Choice, "DocumentCollate", handling},
    {"print-scaling",              Ipp, Choice, "PageScaling", scalings, "auto"},
    {"print-rendering-intent",     Ipp, Choice, "PageICMRenderingIntent", intents, "auto"},
    {"job-hold-until",             Ipp, Setting, "job-type-api", holding, "no-hold"},
    {"job-password",               Ipp, Passcode, passcodeFeature, {}},
    {"ipp-attribute-fidelity",     Ipp, Obey, {}, {}},
    {"job-mandatory-attributes",   Ipp, Obey, {}, {}},
    {"Collate",                    Ppd, Bool, "JobCollateAllDocuments", collating},
    {"Collate",                    Ppd, Bool, "DocumentCollate", collating},
    {"fit-to-page",                Ppd, Bool, "PageScaling", fitting},
    {"fitplot",                    Ppd, Bool, "PageScaling", fitting},
    {"mirror",                     Ppd, Bool, "PageMirrorImage", mirroring},
    {"landscape",                  Ppd, Bool, "PageOrientation", turning},
    {"PageSize",                   Ppd, Size, mediaSizeFeature, {}},
    {"PageRegion",                 Ppd, Size, mediaSizeFeature, {}},
    {"InputSlot",                  Ppd, Choice, mediaSourceFeature, mediaSources},
    {"MediaType",                  Ppd, Choice, mediaTypeFeature, mediaTypes},
    {"Duplex",                     Ppd, Choice, "JobDuplexAllDocumentsContiguously", duplex},
    {"ColorModel",                 Ppd, Choice, "PageOutputColor", colorModels},
    {"Resolution",                 Ppd, Resolution, "PageResolution", {}},
    {"OutputBin",                  Ppd, Choice, "JobOutputBin", {}},
    {"Stapling",                   Ppd, Choice, "JobStapleAllDocuments", {}},
    {"Punch",                      Ppd, Choice, "JobHolePunch", punching},
    {"Fold",                       Ppd, Choice, "JobBindAllDocuments", {}},
};

static_assert(std::ranges::is_partitioned(rows, [](const OptionRow& row) { return row.vocabulary == Ipp; }),
              "the first who asks for a setting has it, and attributes win");

// The server writes enumerated finishings by their words or their numbers; libcups knows the words.
constexpr FinishingWord finishings[] = {
    {"none",                 {}, {}},
    {"staple",               "JobStapleAllDocuments", "StapleTopLeft"},
    {"staple-top-left",      "JobStapleAllDocuments", "StapleTopLeft"},
    {"staple-bottom-left",   "JobStapleAllDocuments", "StapleBottomLeft"},
    {"staple-top-right",     "JobStapleAllDocuments", "StapleTopRight"},
    {"staple-bottom-right",  "JobStapleAllDocuments", "StapleBottomRight"},
    {"edge-stitch",          "JobStapleAllDocuments", "StapleDualLeft"},
    {"edge-stitch-left",     "JobStapleAllDocuments", "StapleDualLeft"},
    {"edge-stitch-top",      "JobStapleAllDocuments", "StapleDualTop"},
    {"edge-stitch-right",    "JobStapleAllDocuments", "StapleDualRight"},
    {"edge-stitch-bottom",   "JobStapleAllDocuments", "StapleDualBottom"},
    {"staple-dual-left",     "JobStapleAllDocuments", "StapleDualLeft"},
    {"staple-dual-top",      "JobStapleAllDocuments", "StapleDualTop"},
    {"staple-dual-right",    "JobStapleAllDocuments", "StapleDualRight"},
    {"staple-dual-bottom",   "JobStapleAllDocuments", "StapleDualBottom"},
    {"saddle-stitch",        "JobStapleAllDocuments", "SaddleStitch"},
    {"punch",                "JobHolePunch", "HolePunch"},
    {"punch",                "JobHolePunch", "HolePunchDualLeft"},
    {"punch-dual-left",      "JobHolePunch", "HolePunchDualLeft"},
    {"punch-dual-top",       "JobHolePunch", "HolePunchDualTop"},
    {"punch-dual-right",     "JobHolePunch", "HolePunchDualRight"},
    {"punch-dual-bottom",    "JobHolePunch", "HolePunchDualBottom"},
    {"punch-triple-left",    "JobHolePunch", "HolePunchTripleLeft"},
    {"punch-triple-top",     "JobHolePunch", "HolePunchTripleTop"},
    {"punch-triple-right",   "JobHolePunch", "HolePunchTripleRight"},
    {"punch-triple-bottom",  "JobHolePunch", "HolePunchTripleBottom"},
    {"punch-quad-left",      "JobHolePunch", "HolePunchQuadLeft"},
    {"punch-quad-top",       "JobHolePunch", "HolePunchQuadTop"},
    {"punch-quad-right",     "JobHolePunch", "HolePunchQuadRight"},
    {"punch-quad-bottom",    "JobHolePunch", "HolePunchQuadBottom"},
    {"bind",                 "JobBindAllDocuments", "BindLeft"},
    {"bind-left",            "JobBindAllDocuments", "BindLeft"},
    {"bind-top",             "JobBindAllDocuments", "BindTop"},
    {"fold",                 "JobBindAllDocuments", "Fold"},
    {"fold-half",            "JobBindAllDocuments", "FoldHalf"},
    {"fold-letter",          "JobBindAllDocuments", "FoldLetter"},
    {"fold-z",               "JobBindAllDocuments", "FoldZ"},
    {"fold-engineering-z",   "JobBindAllDocuments", "FoldEngineeringZ"},
    {"booklet-maker",        "JobBindAllDocuments", "Booklet"},
};
// clang-format on

// In the order of bytes. What only the server or its other filters can do anything about.
constexpr std::string_view serversOwn[] = {
    "AP_D_InputSlot",
    "ColorDevice",
    "FINAL_CONTENT_TYPE",
    "PrintingScaling",
    "attributes-charset",
    "attributes-natural-language",
    "compression",
    "copies",
    "cups-charset",
    "date-time-at-creation",
    "date-time-at-processing",
    "document-compression",
    "document-format",
    "document-format-supplied",
    "document-name",
    "document-name-supplied",
    "job-billing",
    "job-cancel-after",
    "job-id",
    "job-impressions",
    "job-impressions-completed",
    "job-k-octets",
    "job-media-progress",
    "job-media-sheets",
    "job-name",
    "job-originating-host-name",
    "job-originating-user-name",
    "job-password-encryption",
    "job-printer-uri",
    "job-priority",
    "job-sheets",
    "job-state",
    "job-uri",
    "job-uuid",
    "lf",
    "media-bottom-margin",
    "media-left-margin",
    "media-right-margin",
    "media-top-margin",
    "natural-scaling",
    "nocollate",
    "notify-events",
    "notify-recipient-uri",
    "output-device-assigned",
    "pdf-annotations",
    "print-as-raster",
    "print-content-optimize",
    "printer-uri",
    "raw",
    "requesting-user-name",
    "time-at-creation",
    "time-at-processing",
};
static_assert(std::ranges::is_sorted(serversOwn), "they are searched by halves");

} // namespace

std::span<const OptionRow> GetOptionRows() noexcept { return rows; }
std::span<const FinishingWord> GetFinishingWords() noexcept { return finishings; }
std::span<const OptionWord> GetMediaSourceWords() noexcept { return mediaSources; }
std::span<const OptionWord> GetMediaTypeWords() noexcept { return mediaTypes; }

bool IsServersOwn(std::string_view name) noexcept { return std::ranges::binary_search(serversOwn, name); }

const OfferedOption* FindByWords(const OfferedFeature& feature, std::span<const OptionWord> words,
                                 std::string_view value) {
    bool hasWord = false;
    for (const OptionWord& row : words) {
        if (!AreAlike(row.word, value)) continue;
        hasWord = true;
        if (const OfferedOption* const option = feature.Find(row.option)) return option;
    }
    return hasWord ? nullptr : feature.Find(value);
}

} // namespace OvPrintServer
