#pragma once

// Print Capabilities documents for tests.

#include "FilterUtilities/PrintSchema/TicketSupport.h"

#include <PrintSchema/PrintCapabilitiesXmlDocument.h>

inline std::string CapabilitiesText(const std::string& content, const std::string& declarations = {}) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<psf:PrintCapabilities" +
           Declare("psf", frameworkUri) + Declare("psk", keywordsUri) +
           Declare("xsi", "http://www.w3.org/2001/XMLSchema-instance") +
           Declare("xsd", "http://www.w3.org/2001/XMLSchema") + declarations + " version='1'>" + content +
           "</psf:PrintCapabilities>";
}

inline PrintCapabilitiesXmlDocument Capabilities(const std::string& content,
                                                 const std::string& declarations = {}) {
    return PrintCapabilitiesXmlDocument(
        static_cast<IStream*>(StreamOf(CapabilitiesText(content, declarations))));
}

inline std::string Named(const std::string& element, const std::string& name, const std::string& content) {
    return "<psf:" + element + " name='" + name + "'>" + content + "</psf:" + element + ">";
}

inline std::string Property(const std::string& name, const std::string& value) {
    return Named("Property", name, Value(value));
}

inline std::string DisplayName(const std::string& text) { return Property("psk:DisplayName", text); }

inline std::string SizeOption(const std::string& name, const std::string& width, const std::string& height) {
    return Named("Option", name,
                 (width.empty() ? "" : ScoredProperty("psk:MediaSizeWidth", Value(width))) +
                     (height.empty() ? "" : ScoredProperty("psk:MediaSizeHeight", Value(height))));
}

inline std::string SizeFeature(const std::string& options) {
    return Named("Feature", "psk:PageMediaSize", options);
}

/// The first node that an expression selects.
inline CComPtr<IXMLDOMNode> NodeOf(const PrintSchemaXmlDocument& document, const wchar_t* xpath) {
    CComPtr<IXMLDOMNode> node;
    EXPECT_EQ(document.GetNode(xpath, &node), S_OK);
    return node;
}
