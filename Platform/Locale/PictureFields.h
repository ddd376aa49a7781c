#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// One piece of a picture: a run of a field's letter ("yyyy"), or text that is shown as it is.
struct PictureField {
    /// The letter; 0 for text.
    wchar_t letter;
    std::size_t length;
    std::wstring text;
};

/// Takes a picture apart. What stands between single quotes is text, a doubled quote there is one; a quote
/// that is never closed reaches to the end. Letters that are not among `letters` are text.
std::vector<PictureField> ReadPicture(std::wstring_view picture, std::wstring_view letters);

} // namespace OvPlatform
