#include "ObjectModel/MarkupNumbers.h"

#include "ObjectModel/MarkupFailure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace OvPlatform {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::size_t mostChannels = 8; // of a profile, beside alpha

constexpr bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

template <std::size_t count>
std::optional<std::array<FLOAT, count>> ParseExactly(std::string_view text) {
    NumberReader reader(text);
    std::array<FLOAT, count> numbers{};
    for (FLOAT& number : numbers)
        if (!reader.Next(number)) return std::nullopt;
    if (!reader.IsAtEnd()) return std::nullopt;
    return numbers;
}

std::optional<XPS_COLOR> ParseHexColor(std::string_view digits) {
    if (digits.size() != 6 && digits.size() != 8) return std::nullopt;
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    XPS_COLOR color{};
    color.colorType = XPS_COLOR_TYPE_SRGB;
    const auto component = [&](int shift) { return static_cast<UINT8>(value >> shift & 0xFF); };
    color.value.sRGB.alpha = digits.size() == 6 ? UINT8{0xFF} : component(24);
    color.value.sRGB.red = component(16);
    color.value.sRGB.green = component(8);
    color.value.sRGB.blue = component(0);
    return color;
}

std::optional<XPS_COLOR> ParseLinearColor(std::string_view text) {
    const std::optional<std::vector<FLOAT>> numbers = ParseNumbers(text);
    if (!numbers || (numbers->size() != 3 && numbers->size() != 4)) return std::nullopt;
    const FLOAT* const rgb = numbers->data() + numbers->size() - 3;
    XPS_COLOR color{};
    color.colorType = XPS_COLOR_TYPE_SCRGB;
    color.value.scRGB.alpha = numbers->size() == 4 ? numbers->front() : 1.0F;
    color.value.scRGB.red = rgb[0];
    color.value.scRGB.green = rgb[1];
    color.value.scRGB.blue = rgb[2];
    return color;
}

std::optional<XPS_COLOR> ParseContextColor(std::string_view text) {
    const std::size_t profile = std::min(text.find_first_not_of(blanks), text.size());
    const std::size_t end = std::min(text.find_first_of(blanks, profile), text.size());
    const std::optional<std::vector<FLOAT>> numbers = ParseNumbers(text.substr(end));
    if (!numbers || numbers->size() < 2 || numbers->size() > mostChannels + 1) return std::nullopt;
    XPS_COLOR color{};
    color.colorType = XPS_COLOR_TYPE_CONTEXT;
    color.value.context.channelCount = static_cast<UINT8>(numbers->size() - 1);
    std::copy(numbers->begin(), numbers->end(), color.value.context.channels);
    return color;
}

void CheckShare(FLOAT share) {
    CheckFinite(share);
    if (share < 0 || share > 1) throw MarkupFailure(XPS_E_COLOR_COMPONENT_OUT_OF_RANGE);
}

} // namespace

bool NumberReader::Next(FLOAT& number) noexcept {
    SkipBlanks();
    if (m_rest.starts_with(',')) {
        m_rest.remove_prefix(1);
        SkipBlanks();
    }
    std::string_view text = m_rest;
    if (text.starts_with('+')) text.remove_prefix(1);
    const std::size_t first = text.starts_with('-') ? 1 : 0;
    // "inf" and "nan" are numbers to the library and not here.
    if (first >= text.size() || (!IsDigit(text[first]) && text[first] != '.')) return false;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::invalid_argument) return false;
    if (error != std::errc() || std::abs(value) > std::numeric_limits<FLOAT>::max()) return false;
    number = static_cast<FLOAT>(value);
    m_rest.remove_prefix(static_cast<std::size_t>(end - m_rest.data()));
    return true;
}

bool NumberReader::IsAtEnd() noexcept {
    SkipBlanks();
    return m_rest.empty();
}

char NumberReader::NextLetter() noexcept {
    SkipBlanks();
    if (m_rest.empty()) return 0;
    const char c = m_rest.front();
    if ((c < 'A' || c > 'Z') && (c < 'a' || c > 'z')) return 0;
    m_rest.remove_prefix(1);
    return c;
}

void NumberReader::SkipBlanks() noexcept {
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(blanks), m_rest.size()));
}

std::optional<FLOAT> ParseNumber(std::string_view text) {
    const auto numbers = ParseExactly<1>(text);
    return numbers ? std::optional((*numbers)[0]) : std::nullopt;
}

std::optional<XPS_RECT> ParseRect(std::string_view text) {
    const auto numbers = ParseExactly<4>(text);
    if (!numbers) return std::nullopt;
    return XPS_RECT{(*numbers)[0], (*numbers)[1], (*numbers)[2], (*numbers)[3]};
}

std::optional<XPS_MATRIX> ParseMatrix(std::string_view text) {
    const auto numbers = ParseExactly<6>(text);
    if (!numbers) return std::nullopt;
    const auto& n = *numbers;
    return XPS_MATRIX{n[0], n[1], n[2], n[3], n[4], n[5]};
}

std::optional<std::vector<FLOAT>> ParseNumbers(std::string_view text) {
    NumberReader reader(text);
    std::vector<FLOAT> numbers;
    while (!reader.IsAtEnd()) {
        FLOAT number = 0;
        if (!reader.Next(number)) return std::nullopt;
        numbers.push_back(number);
    }
    return numbers;
}

void AppendNumber(std::string& text, FLOAT number) {
    if (number == 0) number = 0; // no "-0"
    const FLOAT size = std::abs(number);
    const auto form = size == 0 || (size >= 1e-5F && size < 1e9F) ? std::chars_format::fixed
                                                                  : std::chars_format::scientific;
    char digits[64];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number, form);
    text.append(digits, end);
}

std::string FormatNumber(FLOAT number) { return FormatNumbers(&number, 1); }

std::string FormatNumbers(const FLOAT* numbers, std::size_t count, char separator) {
    std::string text;
    for (std::size_t index = 0; index < count; ++index) {
        if (index != 0) text += separator;
        AppendNumber(text, numbers[index]);
    }
    return text;
}

std::string FormatRect(const XPS_RECT& rect) {
    return FormatNumbers(std::array{rect.x, rect.y, rect.width, rect.height}.data(), 4);
}

std::string FormatMatrix(const XPS_MATRIX& m) {
    return FormatNumbers(std::array{m.m11, m.m12, m.m21, m.m22, m.m31, m.m32}.data(), 6);
}

std::optional<XPS_COLOR> ParseColor(std::string_view text) {
    constexpr std::string_view linear = "sc#";
    constexpr std::string_view context = "ContextColor";
    if (text.starts_with('#')) return ParseHexColor(text.substr(1));
    if (text.starts_with(linear)) return ParseLinearColor(text.substr(linear.size()));
    if (text.starts_with(context)) return ParseContextColor(text.substr(context.size()));
    return std::nullopt;
}

std::string FormatColor(const XPS_COLOR& color) {
    constexpr std::string_view hex = "0123456789ABCDEF";
    switch (color.colorType) {
    case XPS_COLOR_TYPE_SCRGB: {
        const auto& c = color.value.scRGB;
        return "sc#" + FormatNumbers(std::array{c.alpha, c.red, c.green, c.blue}.data(), 4);
    }
    case XPS_COLOR_TYPE_CONTEXT: {
        const auto& c = color.value.context;
        return " " + FormatNumbers(c.channels, c.channelCount + std::size_t{1});
    }
    default: {
        const auto& c = color.value.sRGB;
        std::string text = "#";
        for (const UINT8 component : {c.alpha, c.red, c.green, c.blue}) {
            text += hex[component >> 4];
            text += hex[component & 0xF];
        }
        return text;
    }
    }
}

void CheckFinite(FLOAT number) {
    if (!std::isfinite(number)) throw MarkupFailure(XPS_E_INVALID_FLOAT);
}

void CheckNotNegative(FLOAT number) {
    CheckFinite(number);
    if (number < 0) throw MarkupFailure(XPS_E_NEGATIVE_FLOAT);
}

void CheckOpacity(FLOAT opacity) {
    CheckFinite(opacity);
    if (opacity < 0 || opacity > 1) throw MarkupFailure(E_INVALIDARG);
}

void CheckColor(const XPS_COLOR& color) {
    switch (color.colorType) {
    case XPS_COLOR_TYPE_SRGB:
        return;
    case XPS_COLOR_TYPE_SCRGB: // beyond black and white are colours too
        CheckShare(color.value.scRGB.alpha);
        CheckFinite(color.value.scRGB.red);
        CheckFinite(color.value.scRGB.green);
        CheckFinite(color.value.scRGB.blue);
        return;
    case XPS_COLOR_TYPE_CONTEXT:
        if (color.value.context.channelCount == 0 || color.value.context.channelCount > mostChannels)
            throw MarkupFailure(E_INVALIDARG);
        for (std::size_t index = 0; index <= color.value.context.channelCount; ++index)
            CheckShare(color.value.context.channels[index]);
        return;
    }
    throw MarkupFailure(E_INVALIDARG);
}

void CheckRect(const XPS_RECT& rect) {
    CheckFinite(rect.x);
    CheckFinite(rect.y);
    CheckNotNegative(rect.width);
    CheckNotNegative(rect.height);
}

} // namespace OvPlatform
