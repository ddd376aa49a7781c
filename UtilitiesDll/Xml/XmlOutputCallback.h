#pragma once

#include <cstddef>

/// Takes the UTF-8 text of a serialised document.
class XmlOutputCallback {
public:
    enum EnhanceXmlLegibilityEnum {
        DoNotEnhanceXmlLegibility = 0,
        /// Line breaks and indentation between elements, where no text would be changed by them.
        EnhanceXmlLegibility = 1,
    };

    explicit XmlOutputCallback(EnhanceXmlLegibilityEnum enhance) noexcept : m_enhance(enhance) {}
    virtual ~XmlOutputCallback() = default;

    /// Called with the text in order, in one piece or several. May throw; the serialisation ends then.
    virtual void write(const char* utf8, std::size_t length) = 0;
    [[nodiscard]] EnhanceXmlLegibilityEnum getEnhanceXmlLegibility() const noexcept { return m_enhance; }

private:
    EnhanceXmlLegibilityEnum m_enhance;
};
