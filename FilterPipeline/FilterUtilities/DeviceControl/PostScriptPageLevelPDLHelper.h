#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/WideStrings/CXString.h>
#include <Xml/XmlDomNode.h>

#include <vector>

/// Writes the PostScript that changes media, sides and tray between two pages. The settings are a list of
/// texts "name=value"; one that is not of this form, or has another name, is passed over:
///
///   media-size            width and height in microns, with a comma between them
///   effective-media-type  a Print Schema keyword
///   media-color           a Print Schema keyword
///   sides-imaged          one-sided, two-sided-long-edge, two-sided-short-edge
///   input-tray            a tray's keyword; AutoSelect is the device's automatic one
///
/// All are tried at once, and where the device refuses them, one by one. Failures of the platform and of the
/// strings pass through. Belongs to one thread.
class OV_FILTER_UTILITIES_API PostScriptPageLevelPDLHelper {
public:
    /// Of a product without data.
    PostScriptPageLevelPDLHelper();
    /// Parses the product's data (docs/formats/product-data.md), which must outlive this object. Throws
    /// CPComException for a text that is no document.
    explicit PostScriptPageLevelPDLHelper(const CPString& productData);
    /// Takes the parsed data out of the other, which is left as one of a product without.
    PostScriptPageLevelPDLHelper(PostScriptPageLevelPDLHelper& other);
    PostScriptPageLevelPDLHelper& operator=(PostScriptPageLevelPDLHelper& other);
    ~PostScriptPageLevelPDLHelper();

    /// With built-in commands, and a comment that names the size of the sheet.
    CXString GenerateOcptBasedPageLevelPostScript(std::vector<CXString>& settings);
    /// Tries one by one what the product's data say.
    CXString GenerateOcptAndProductSpecificPDLPageLevelPostScript(std::vector<CXString>& settings);
    /// Makes the dictionary of what the product's data say, and tries it once.
    CXString GeneratePDLFromProductData(std::vector<CXString>& settings);

    /// The device's name of a media type; what has none comes back as it is.
    static CXString GetCPSSMediaTypeStringFromPrintTicketName(CXString& name);
    /// The same for a colour.
    static CXString GetCPSSMediaColorStringFromPrintTicketName(CXString& name);

private:
    /// The product's command for an option; empty where it has none.
    CXString GetCommand(const wchar_t* feature, CXString& option);

    const CPString* m_productData = nullptr;
    XmlDomNode::Pointer m_root;
};
