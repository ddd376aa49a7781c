#pragma once

#include "LowLevelFacilities/Numbers/Dimension.h"
#include "LowLevelFacilities/Ownership/OvlSharedPtr.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/ByteBuffer.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <windows.h>

#include <type_traits>
#include <utility>
#include <variant>

class AttributeBytesList;
class AttributeBytesRawList;

/// The value of an attribute: what it is and whether anyone stated it. A value that is not specified keeps
/// what was stored with it. Copies share nested lists, which never change.
class OV_UTILITIES_API AttributeBytesValue {
public:
    /// The numbers stand in stores. A kind that has no name here is one of a newer driver: its bytes are kept
    /// and written back.
    enum class Kind : unsigned char {
        Option = 1,
        Integer = 2,
        String = 3,
        Dimension = 4,
        /// Attributes, each found by its feature number.
        Collection = 5,
        /// Values without feature numbers, found by position: collections as a rule.
        CollectionSet = 6,
    };
    static constexpr unsigned int maxKind = 15;
    /// Collections nest at most so deep; one that holds none has depth 1.
    static constexpr unsigned int maxDepth = 16;
    /// The option that stands for none: VAL_UNSPECIFIED.
    static constexpr LONG unspecifiedOption = 5001;

    [[nodiscard]] static AttributeBytesValue FromOption(LONG value, bool isSpecified = true);
    [[nodiscard]] static AttributeBytesValue FromInteger(int value, bool isSpecified = true);
    [[nodiscard]] static AttributeBytesValue FromString(CXString value, bool isSpecified = true);
    [[nodiscard]] static AttributeBytesValue FromDimension(::Dimension value, bool isSpecified = true);
    /// Of the attributes of a list. Throws CPExceptionInvalidArgument beyond maxDepth.
    [[nodiscard]] static AttributeBytesValue FromCollection(const AttributeBytesList& members,
                                                            bool isSpecified = true);
    /// Of the values of a list, in its order; their feature numbers become their positions, from 0. Throws
    /// CPExceptionInvalidArgument beyond maxDepth.
    [[nodiscard]] static AttributeBytesValue FromCollectionSet(const AttributeBytesList& members,
                                                               bool isSpecified = true);
    /// Of a kind that has no name here, at most maxKind. Throws CPExceptionInvalidArgument for one that has.
    [[nodiscard]] static AttributeBytesValue FromUnknown(unsigned int kind, ByteBuffer bytes,
                                                         bool isSpecified = true);

    [[nodiscard]] bool IsSpecified() const noexcept { return m_isSpecified; }
    [[nodiscard]] Kind GetKind() const noexcept { return m_kind; }
    /// How many levels of collections it holds; 0 if it is none.
    [[nodiscard]] unsigned int GetDepth() const noexcept { return m_depth; }

    /// The content, null if the value is of another kind. Valid as long as the value.
    [[nodiscard]] const LONG* GetOption() const noexcept;
    [[nodiscard]] const LONG* GetInteger() const noexcept;
    [[nodiscard]] const CXString* GetString() const noexcept;
    [[nodiscard]] const Dimension* GetDimension() const noexcept;
    /// The members of a collection or of a set of collections.
    [[nodiscard]] const AttributeBytesRawList* GetCollection() const noexcept;
    /// The bytes of a kind that has no name here.
    [[nodiscard]] const ByteBuffer* GetUnknown() const noexcept;

private:
    using Members = OvlSharedPtr<const AttributeBytesRawList>;
    using Content = std::variant<LONG, CXString, Dimension, Members, ByteBuffer>;

    template <typename Part>
    AttributeBytesValue(Kind kind, bool isSpecified, Part&& content, unsigned int depth = 0)
        : m_content(std::in_place_type<std::remove_cvref_t<Part>>, std::forward<Part>(content)), m_kind(kind),
          m_isSpecified(isSpecified), m_depth(static_cast<unsigned char>(depth)) {}

    Content m_content;
    Kind m_kind;
    bool m_isSpecified;
    unsigned char m_depth;
};
