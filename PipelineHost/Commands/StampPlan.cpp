#include "Commands/StampPlan.h"

#include "Common/HostError.h"
#include "Common/Text.h"

#include <FontsAndImages/GDIPlus.h>
#include <System/InputFile.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

namespace OvPipeline {

namespace {

constexpr float unitsOfPoint = 96.0F / 72.0F;
constexpr float margin = 36; // points from the page's edges
// Dots to the inch of a picture that does not say: as readers of pages take it, and as it gets here.
constexpr float readResolution = 96;
constexpr float printedResolution = 300;
constexpr float largest = 100000; // points; no page is as large
constexpr unsigned long largestSize = 1000;

// Which files pictures may come from, and by which bytes they begin.
struct PictureFile {
    std::string_view extension;
    std::string_view signature;
};
constexpr std::array pictureFiles{PictureFile{".jpg", "\xFF\xD8\xFF"}, PictureFile{".png", "\x89PNG"},
                                  PictureFile{".gif", "GIF8"}, PictureFile{".bmp", "BM"}};

std::optional<float> Number(std::string_view text, float least, float most) {
    float number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !(number >= least && number <= most))
        return {};
    return number;
}

float NumberOf(const char* option, const std::string& text, float least, float most, const char* wanted) {
    const auto number = Number(text, least, most);
    if (!number) throw UsageError(std::string(option) + " wants " + wanted + ", not \"" + text + "\"");
    return *number;
}

int SizeOf(const std::string& text) {
    unsigned long size = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
    if (error != std::errc() || end != text.data() + text.size() || size == 0 || size > largestSize)
        throw UsageError("--size wants whole points from 1 to 1000, not \"" + text + "\"");
    return static_cast<int>(size);
}

XPS_COLOR ColorOf(std::string_view text) {
    const std::string_view digits = text.starts_with('#') ? text.substr(1) : text;
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc() || end != digits.data() + digits.size() ||
        (digits.size() != 6 && digits.size() != 8))
        throw UsageError("--color wants RRGGBB or AARRGGBB, not \"" + std::string(text) + "\"");
    if (digits.size() == 6) value |= 0xFF000000;
    XPS_COLOR color{};
    color.colorType = XPS_COLOR_TYPE_SRGB;
    color.value.sRGB.alpha = static_cast<UINT8>(value >> 24);
    color.value.sRGB.red = static_cast<UINT8>(value >> 16);
    color.value.sRGB.green = static_cast<UINT8>(value >> 8);
    color.value.sRGB.blue = static_cast<UINT8>(value);
    return color;
}

XPS_POINT PlaceOf(const std::string& text) {
    const std::size_t comma = text.find(',');
    const auto x = Number(std::string_view(text).substr(0, comma), -largest, largest);
    const auto y = comma == std::string::npos
                       ? std::nullopt
                       : Number(std::string_view(text).substr(comma + 1), -largest, largest);
    if (!x || !y) throw UsageError("--at wants X,Y in points, not \"" + text + "\"");
    return {*x * unitsOfPoint, *y * unitsOfPoint};
}

// The text's top left corner is at the margins, more or less: the size is that of its line.
XPS_POINT UsualPlace(const StampPlan& plan, bool isText) {
    const float down = margin + (isText ? static_cast<float>(plan.size) : 0);
    return {margin * unitsOfPoint, down * unitsOfPoint};
}

void RequirePictureFile(const std::string& file) {
    const std::string extension = LowerAscii(std::filesystem::path(file).extension().string());
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> bytes(OvPlatform::OpenInputFile(file),
                                                                &std::fclose);
    if (!bytes)
        throw InputError(errno == ENOENT ? HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND) : E_ACCESSDENIED, file,
                         "the picture " + file + " cannot be read");
    char begin[4] = {};
    const std::string_view read(begin, std::fread(begin, 1, sizeof begin, bytes.get()));
    for (const PictureFile& known : pictureFiles) {
        if (extension != known.extension) continue;
        if (read.starts_with(known.signature)) return;
        throw InputError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), file,
                         "the picture " + file + " is not what its name says");
    }
    throw UsageError("--image wants a file that ends in .jpg, .png, .gif or .bmp, not \"" + file + "\"");
}

float InXpsUnits(UINT pixels, float resolution, float assumed) {
    return static_cast<float>(pixels) * 96 / (resolution > 0 ? resolution : assumed);
}

PlacedPicture Place(const CommandOptions& options, const XPS_POINT& at) {
    RequirePictureFile(options.image);
    const GDIPlus runtime;
    Gdiplus::Bitmap picture(Wide(options.image).c_str());
    if (picture.GetLastStatus() != Gdiplus::Ok || picture.GetWidth() == 0 || picture.GetHeight() == 0)
        throw InputError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), options.image,
                         "the picture " + options.image + " is damaged, or too large");
    PlacedPicture placed{options.image, {}, {}};
    const auto width = [&](float assumed) {
        return InXpsUnits(picture.GetWidth(), picture.GetHorizontalResolution(), assumed);
    };
    const auto height = [&](float assumed) {
        return InXpsUnits(picture.GetHeight(), picture.GetVerticalResolution(), assumed);
    };
    placed.whole = {0, 0, width(readResolution), height(readResolution)};
    float scale = 1;
    if (!options.width.empty())
        scale = NumberOf("--width", options.width, 0.1F, largest, "points") * unitsOfPoint /
                width(printedResolution);
    placed.place = {at.x, at.y, width(printedResolution) * scale, height(printedResolution) * scale};
    return placed;
}

std::string OutputOf(const CommandOptions& options) {
    if (options.output == standardStream)
        throw UsageError("stamp writes a file, not the output stream: -o names it");
    if (!options.output.empty()) return options.output;
    if (options.job.name != options.job.path)
        throw UsageError("what comes by the input stream has no name: -o names the output");
    const std::filesystem::path& job = options.job.path;
    return job.stem().string() + "-stamped" + (job.has_extension() ? job.extension().string() : ".xps");
}

std::uint64_t HashOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    return hash;
}

void RefuseOption(const char* option, bool isGiven, const char* with) {
    if (isGiven) throw UsageError(std::string(option) + " goes with " + with);
}

// What markup cannot hold is refused ahead of its font: control characters, U+FFFE and U+FFFF.
void RequireLine(const std::string& text) {
    if (std::any_of(text.begin(), text.end(), [](char c) { return c >= 0 && c < ' '; }))
        throw UsageError("--text is one line, without control characters");
    for (const char* none : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"})
        if (text.find(none) != std::string::npos) throw UsageError("--text holds what is no character");
}

} // namespace

StampPlan MakeStampPlan(const CommandOptions& options) {
    const bool isText = !options.text.empty();
    if (isText == !options.image.empty())
        throw UsageError("what is to be stamped: ov-pipeline stamp wants --text TEXT or --image FILE");
    RefuseOption("--font", !isText && !options.font.empty(), "--text");
    RefuseOption("--size", !isText && !options.size.empty(), "--text");
    RefuseOption("--color", !isText && !options.color.empty(), "--text");
    RefuseOption("--width", isText && !options.width.empty(), "--image");
    RefuseOption("--opacity", isText && !options.opacity.empty(), "--image; a text has it in its --color");
    RequireLine(options.text);
    StampPlan plan;
    plan.output = OutputOf(options);
    std::error_code error;
    if (!isText && std::filesystem::equivalent(options.image, plan.output, error))
        throw UsageError("the output would take the place of the picture " + options.image);
    plan.font = options.font;
    if (!options.size.empty()) plan.size = SizeOf(options.size);
    plan.color = ColorOf(options.color.empty() ? "000000" : options.color);
    plan.at = options.at.empty() ? UsualPlace(plan, isText) : PlaceOf(options.at);
    if (!options.opacity.empty())
        plan.opacity = NumberOf("--opacity", options.opacity, 0, 1, "a number from 0 to 1");
    if (!isText) plan.picture = Place(options, plan.at);
    return plan;
}

std::string FreeFontName(const OvPlatform::PackageReader& job, const std::string& purpose) {
    for (unsigned attempt = 0;; ++attempt) {
        const std::uint64_t first = HashOf(purpose + std::to_string(attempt));
        const std::uint64_t second = HashOf(std::to_string(first) + purpose);
        char name[80];
        std::snprintf(name, sizeof name, "/Resources/Fonts/%08X-%04X-%04X-%04X-%012llX.odttf",
                      static_cast<unsigned>(first >> 32), static_cast<unsigned>(first >> 16 & 0xFFFF),
                      static_cast<unsigned>(first & 0xFFFF), static_cast<unsigned>(second >> 48),
                      static_cast<unsigned long long>(second & 0xFFFFFFFFFFFF));
        if (job.Find(name) == nullptr) return name;
    }
}

std::string FreePictureName(const OvPlatform::PackageReader& job) {
    for (unsigned number = 1;; ++number) {
        std::string name = "/Resources/Images/Stamp" + std::to_string(number);
        if (job.Find(name + ".png") == nullptr && job.Find(name + ".jpg") == nullptr) return name;
    }
}

} // namespace OvPipeline
