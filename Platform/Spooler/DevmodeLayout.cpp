#include "Spooler/DevmodeLayout.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

namespace OvPlatform {

namespace {

// The stored public part: two texts of 32 units, 38 bytes after the first, 54 after the second. Only texts
// differ between the stored form and DEVMODEW.
constexpr std::size_t textUnits = CCHDEVICENAME;
constexpr std::size_t storedText = textUnits * 2;
constexpr std::size_t middle = 38;
constexpr std::size_t tail = 54;
constexpr std::size_t storedPublic = storedText + middle + storedText + tail;
// The least that a device mode holds: all up to and with dmFields.
constexpr std::size_t storedSmallest = storedText + 12;
constexpr std::size_t sizeOffset = storedText + 4;
constexpr std::size_t extraOffset = storedText + 6;

static_assert(storedPublic == 220);
static_assert(offsetof(DEVMODEW, dmFormName) == offsetof(DEVMODEW, dmCollate) +
                                                    sizeof(short) +        // no padding but
                                                    (alignof(WCHAR) - 2)); // for the text

std::size_t Word(const std::uint8_t* bytes) { return bytes[0] | static_cast<std::size_t>(bytes[1]) << 8; }

void LoadText(const std::uint8_t* stored, WCHAR* text) {
    for (std::size_t i = 0; i < textUnits; ++i)
        text[i] = static_cast<WCHAR>(Word(stored + 2 * i));
}

void StoreText(const WCHAR* text, std::uint8_t* stored) {
    for (std::size_t i = 0; i < textUnits; ++i) {
        stored[2 * i] = static_cast<std::uint8_t>(text[i]);
        stored[2 * i + 1] = static_cast<std::uint8_t>(text[i] >> 8);
    }
}

} // namespace

std::vector<std::uint8_t> LoadDevmode(const std::vector<std::uint8_t>& stored) {
    if (stored.size() < storedSmallest) return {};
    const std::size_t publicSize = Word(&stored[sizeOffset]);
    const std::size_t extra = Word(&stored[extraOffset]);
    if (publicSize < storedSmallest || publicSize + extra > stored.size()) return {};

    // Older and shorter device modes end early; what they lack is zero.
    std::uint8_t whole[storedPublic] = {};
    std::memcpy(whole, stored.data(), std::min(publicSize, storedPublic));

    DEVMODEW mode{};
    LoadText(whole, mode.dmDeviceName);
    std::memcpy(&mode.dmSpecVersion, whole + storedText, middle);
    LoadText(whole + storedText + middle, mode.dmFormName);
    std::memcpy(&mode.dmLogPixels, whole + 2 * storedText + middle, sizeof(WORD));
    std::memcpy(&mode.dmBitsPerPel, whole + 2 * storedText + middle + 2, tail - 2);
    mode.dmSize = sizeof mode;

    std::vector<std::uint8_t> record(sizeof mode + extra);
    std::memcpy(record.data(), &mode, sizeof mode);
    if (extra != 0) std::memcpy(record.data() + sizeof mode, &stored[publicSize], extra);
    return record;
}

std::vector<std::uint8_t> StoreDevmode(const std::vector<std::uint8_t>& record) {
    DEVMODEW mode{};
    if (record.size() < sizeof mode) return {};
    std::memcpy(&mode, record.data(), sizeof mode);
    if (mode.dmSize < sizeof mode || std::size_t{mode.dmSize} + mode.dmDriverExtra > record.size()) return {};

    std::vector<std::uint8_t> stored(storedPublic + mode.dmDriverExtra);
    const std::uint8_t* extra = record.data() + mode.dmSize;
    mode.dmSize = storedPublic;
    StoreText(mode.dmDeviceName, stored.data());
    std::memcpy(stored.data() + storedText, &mode.dmSpecVersion, middle);
    StoreText(mode.dmFormName, stored.data() + storedText + middle);
    std::memcpy(stored.data() + 2 * storedText + middle, &mode.dmLogPixels, sizeof(WORD));
    std::memcpy(stored.data() + 2 * storedText + middle + 2, &mode.dmBitsPerPel, tail - 2);
    std::copy_n(extra, mode.dmDriverExtra, stored.begin() + storedPublic);
    return stored;
}

} // namespace OvPlatform
