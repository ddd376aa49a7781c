#include "Locale/PictureFields.h"

namespace OvPlatform {
namespace {

void AppendText(std::vector<PictureField>& fields, wchar_t unit) {
    if (fields.empty() || fields.back().letter != 0) fields.push_back({});
    fields.back().text += unit;
}

/// The text between quotes that begins behind `at`; leaves `at` behind the closing one.
void ReadQuoted(std::wstring_view picture, std::size_t& at, std::vector<PictureField>& fields) {
    while (at < picture.size()) {
        const wchar_t unit = picture[at++];
        if (unit == L'\'') {
            if (at == picture.size() || picture[at] != L'\'') return;
            ++at;
        }
        AppendText(fields, unit);
    }
}

} // namespace

std::vector<PictureField> ReadPicture(std::wstring_view picture, std::wstring_view letters) {
    std::vector<PictureField> fields;
    for (std::size_t at = 0; at < picture.size();) {
        const wchar_t unit = picture[at];
        if (unit == L'\'') {
            ReadQuoted(picture, ++at, fields);
        } else if (letters.find(unit) != std::wstring_view::npos) {
            const std::size_t end = picture.find_first_not_of(unit, at);
            const std::size_t length = (end == std::wstring_view::npos ? picture.size() : end) - at;
            fields.push_back({unit, length, {}});
            at += length;
        } else {
            AppendText(fields, unit);
            ++at;
        }
    }
    return fields;
}

} // namespace OvPlatform
