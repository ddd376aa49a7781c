#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "Xml/OrvelXmlParser.h"

#include <windows.h>

/// A parser over the platform's DOM. DTDs are refused and nothing outside the document is fetched.
class OV_UTILITIES_API MicrosoftXmlParser : public OrvelXmlParser {
public:
    /// The name says in messages what is being parsed. Without preserveWhiteSpace, text of white space only
    /// is dropped.
    MicrosoftXmlParser(const CXString& name, bool preserveWhiteSpace);
    MicrosoftXmlParser(const MicrosoftXmlParser&) = delete;
    MicrosoftXmlParser& operator=(const MicrosoftXmlParser&) = delete;
    ~MicrosoftXmlParser() override;

    void parse(const CPString& xml) override;
    void parse(const CXString& xml) override;
    void parse(const unsigned char* bytes, std::size_t length) override;
    void parseThisFile(const CXString& path) override;
    [[nodiscard]] const XmlDomDocument& getDocument() const override { return m_document; }
    void convertToXmlStream(XmlOutputCallback& output, bool withDeclaration) const override;
    void SaveXmlToFile(const CXString& path) const override;

private:
    void CheckLoaded(HRESULT result, VARIANT_BOOL isLoaded) const;

    CXString m_name;
    XmlDomDocument m_document;
};
