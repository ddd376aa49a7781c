#pragma once

#include "Imaging/ByteFields.h"

#include <optional>

namespace OvPlatform {

/// The first directory of a TIFF file, or of the block of the same form in which a camera describes a JPEG
/// picture. Refers to the bytes.
class TiffDirectory {
public:
    enum Tag : std::uint32_t {
        Width = 256,
        Height = 257,
        XResolution = 282,
        YResolution = 283,
        ResolutionUnit = 296
    };

    /// Nothing if the bytes are none, or the directory does not lie within them.
    static std::optional<TiffDirectory> Find(PictureBytes bytes) noexcept;

    /// 0 where there is none.
    std::uint32_t Number(Tag tag) const noexcept;
    /// XResolution or YResolution in dots per inch; 0 where there is none, or it is but a proportion.
    double DotsPerInch(Tag tag) const noexcept;

private:
    TiffDirectory(const ByteFields& fields, std::size_t start) noexcept : m_fields(fields), m_start(start) {}

    /// Where the entry of a tag begins; 0 if there is none.
    std::size_t Entry(Tag tag) const noexcept;

    ByteFields m_fields;
    std::size_t m_start;
};

} // namespace OvPlatform
