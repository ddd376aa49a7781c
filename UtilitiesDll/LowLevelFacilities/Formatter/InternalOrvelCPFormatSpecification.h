#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"

#include <cstddef>
#include <optional>

namespace InternalOrvelCP {

/// One specification of a printf-style format, from its '%' to its conversion letter:
/// %[flags][width][.precision][length]letter. The length (hh, h, l, ll, z, t, j, L, w, I32, I64, I) is
/// understood and, apart from h and hh, without effect: the argument's own type decides.
class OV_UTILITIES_API FormatSpecification {
public:
    FormatSpecification() noexcept {
        m_text[0] = '%';
        m_text[1] = '\0';
    }

    /// Longest specification that is taken.
    static constexpr std::size_t maxLength = 47;
    /// Largest width or precision that is taken.
    static constexpr int maxCount = 99'999;

    /// `text` stands behind the '%'. Gives the place behind the specification. Throws
    /// CPExceptionInvalidArgument if there is none or it is not understood.
    const char* parseAfterFirstPercentCharacter(const char* text);

    /// The specification with its '%', as it stood in the format.
    [[nodiscard]] const char* getFormatSpecificationString() const noexcept { return m_text; }
    [[nodiscard]] std::size_t getFormatSpecificationLength() const noexcept { return m_length; }
    /// Turns %S and %ls into %s, and %C and %lc into %c.
    void convertWideCharFormatSpecifierCharacterToMultibyteSpecifier() noexcept;

    [[nodiscard]] char conversion() const noexcept { return m_text[m_length - 1]; }
    [[nodiscard]] bool isIntegral() const noexcept { return m_kind == Kind::Integral; }
    [[nodiscard]] bool isCharacter() const noexcept { return conversion() == 'c' || conversion() == 'C'; }
    [[nodiscard]] bool isFloating() const noexcept { return m_kind == Kind::Floating; }
    /// No flags, no width, no precision.
    [[nodiscard]] bool isPlain() const noexcept { return m_lengthModifierAt == 1; }
    [[nodiscard]] bool containsAsterisk() const noexcept { return m_containsAsterisk; }
    /// How a number is padded.
    struct Padding {
        int width = 0;
        bool isLeft = false;
        bool hasZeros = false;
    };
    /// Nothing where other flags shape the number too.
    [[nodiscard]] std::optional<Padding> onlyPadding() const noexcept;
    [[nodiscard]] bool hasPrecision() const noexcept { return m_precisionAt != m_lengthModifierAt; }
    /// -1 if there is none.
    [[nodiscard]] int precision() const noexcept { return m_precision; }
    /// 0, 1 for the length h, 2 for hh.
    [[nodiscard]] int shortness() const noexcept { return m_shortness; }
    /// The length l or w, which makes a character of %c a wide one.
    [[nodiscard]] bool isLong() const noexcept { return m_isLong; }

    /// The specification as the runtime's formatter is to get it: the same flags, width and precision, with
    /// another length and letter.
    struct CrtSpecification {
        char text[maxLength + 25];
    };
    [[nodiscard]] CrtSpecification forCrt(const char* lengthAndLetter) const noexcept;
    /// The same for %s and a text of that many bytes, which need not be terminated: they are its precision.
    [[nodiscard]] CrtSpecification forCrtText(std::size_t bytes) const noexcept;

private:
    enum class Kind : unsigned char { Other, Integral, Floating };

    void takeText(const char* text, std::size_t length) noexcept;

    char m_text[maxLength + 1]; // from its '%', terminated; what follows is not set
    std::size_t m_length = 1;
    std::size_t m_precisionAt = 1;      // where flags and width end
    std::size_t m_lengthModifierAt = 1; // where flags, width and precision end
    int m_width = 0;
    int m_precision = -1;
    int m_shortness = 0;
    bool m_isLong = false;
    bool m_containsAsterisk = false;
    Kind m_kind = Kind::Other;
};

} // namespace InternalOrvelCP
