#include "DeviceControl/DeviceFamily.h"

#include "DeviceControl/PrintInstructionGenerator.h"

#include <algorithm>

namespace {

using Language = DeviceFamily::PageLanguage;
using Generator = PrintInstructionGenerator;
using ThreeTexts = void (Generator::*)(CXString&, CXString&, CXString&);
using ThreeTextsAndFlag = void (Generator::*)(CXString&, CXString&, CXString&, bool);

template <ThreeTexts generate>
void Generate(Generator& generator, DeviceInstructions& out) {
    (generator.*generate)(out.pjlCommands, out.setupCommands, out.trailerComments);
}

template <ThreeTextsAndFlag generate>
void Generate(Generator& generator, DeviceInstructions& out) {
    (generator.*generate)(out.pjlCommands, out.setupCommands, out.trailerComments, false);
}

void GeneratePclm(Generator& generator, DeviceInstructions& out) {
    generator.GenerateSpecialLowEndPCLm(out.pjlCommands, out.setupCommands);
    out.trailerComments.Empty();
}

constexpr DeviceFamily families[] = {
    {"Kestrel", Language::PostScript, false, Generate<&Generator::GenerateLegacyKestrelPostScript>},
    {"Harrier", Language::PostScript, true, Generate<&Generator::GenerateLegacyHarrierPostScript>},
    {"Osprey", Language::PostScript, false, Generate<&Generator::GenerateLegacyOspreyPostScript>},
    {"Merlin", Language::PostScript, true, Generate<&Generator::GenerateLegacyMerlinPostScript>},
    {"MerlinPCL6", Language::Pcl6, false, Generate<&Generator::GenerateLegacyMerlinPCL6>},
    {"LowEndPS", Language::PostScript, false, Generate<&Generator::GenerateSpecialLowEndPS>},
    {"LowEndPCL6", Language::Pcl6, false, Generate<&Generator::GenerateSpecialLowEndPCL6>},
    {"LowEndPCLm", Language::Pclm, false, GeneratePclm},
};

constexpr char Lower(char unit) {
    return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit + ('a' - 'A')) : unit;
}

} // namespace

std::span<const DeviceFamily> DeviceFamilies() noexcept { return families; }

const DeviceFamily* FindDeviceFamily(std::string_view name) noexcept {
    const auto found = std::ranges::find_if(families, [&](const DeviceFamily& family) {
        return std::ranges::equal(family.name, name, {}, Lower, Lower);
    });
    return found == std::end(families) ? nullptr : found;
}
