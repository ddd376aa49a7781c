#include "Configuration/XmlConfigurationReading.h"

#include "ComSupport/FailureBarrier.h"
#include "Configuration/ConfigurationElements.h"
#include "Configuration/ElementLine.h"

#include <LowLevelFacilities/Failures/CPExceptionXMLConfigurationFileParseFailed.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <LowLevelFacilities/Formatter/CPFormat.h>
#include <Xml/MicrosoftXmlParser.h>
#include <Xml/XmlText.h>

#include <utility>

namespace {

using Fault = XmlConfigurationReading::Fault;
using Outcome = XmlConfigurationReading::Outcome;

constexpr auto parserName = L"XML configuration";
constexpr auto sourceName = L"Input_XML_Configuration.xml";

bool IsFeature(const XmlDomNode& element) { return element.GetNodeName() == L"Feature"; }

// As an element is listed; empty for one that says nothing of features.
CPString ListedName(const XmlDomNode& element) {
    const CXString elementName = element.GetNodeName();
    if (ConfigurationElements::IsPassedOver(elementName)) return {};
    CXString name;
    if (IsFeature(element) && element.GetAttribute(L"Name", name)) return CPString(name);
    return FormatCPString("<%s>", elementName);
}

// The fault in flight, in the parser's words where it is the parser's.
Fault DescribeCaught(const MicrosoftXmlParser* parser) {
    Fault fault;
    try {
        throw;
    } catch (const CPExceptionXMLConfigurationFileParseFailed& caught) {
        return {caught.getExceptionMessage(), true};
    } catch (const std::exception& caught) {
        fault.message = caught.what();
    } catch (...) {
        fault.message = "Unknown exception occurred";
    }
    CComPtr<IXMLDOMParseError> error;
    CComBSTR reason;
    LONG line = 0;
    if (parser == nullptr || FAILED(parser->getDocument().GetInterface()->get_parseError(&error)) || !error)
        return fault;
    if (FAILED(error->get_line(&line)) || line == 0 || FAILED(error->get_reason(&reason))) return fault;
    fault.line = static_cast<int>(line);
    fault.message = CPString(XmlText::toCXString(reason).Trim());
    return fault;
}

} // namespace

XmlConfigurationReading::XmlConfigurationReading(const CPString& xml,
                                                 SourceDataIntegratorInterfaces* integrator) {
    const OperationScope operation("XmlConfigurationReading::XmlConfigurationReading");
    if (!xml.isEmpty()) Read(xml, integrator);
}

void XmlConfigurationReading::Read(const CPString& xml, SourceDataIntegratorInterfaces* integrator) {
    std::optional<MicrosoftXmlParser> parser;
    try {
        parser.emplace(parserName, false);
        parser->parse(xml);
        if (integrator != nullptr) integrator->AddSourceData(sourceName, xml);
        ReadElements(*parser->getDocument().GetDocumentElement());
    } catch (...) {
        m_fault = DescribeCaught(parser ? &*parser : nullptr);
    }
    if (m_fault && m_fault->isInContent) m_fault->line = FindElementLine(CXString(xml), m_stopped);
}

void XmlConfigurationReading::ReadElements(const XmlDomNode& root) {
    for (auto element = ConfigurationElements::First(root); element;
         element = ConfigurationElements::Next(*element)) {
        try {
            ReadElement(*element);
        } catch (...) {
            NoteLost(*element);
            throw;
        }
        ++m_stopped.elementsBefore;
    }
}

void XmlConfigurationReading::ReadElement(XmlDomNode& element) {
    const CXString name = element.GetNodeName();
    if (name == L"Feature") {
        ReadFeature(element);
    } else if (!ConfigurationElements::IsPassedOver(name)) {
        ThrowFailure<CPExceptionXMLConfigurationFileParseFailed>([&name] {
            return FormatStdString("Encountered <%s> element when expecting a <Feature> element", name);
        });
    }
}

void XmlConfigurationReading::ReadFeature(XmlDomNode& element) {
    CXString text;
    if (!element.GetAttribute(L"Name", text)) {
        ThrowFailure<CPExceptionXMLConfigurationFileParseFailed>(
            [] { return "Encountered a <Feature> element without a Name attribute"; });
    }
    const CPString name(text);
    m_stopped.isInner = true;
    NativeXmlConfigurationFeature feature(element, name);
    m_stopped.isInner = false;
    Outcome outcome = Outcome::Unknown;
    if (feature.IsSupportedFeature())
        outcome = m_features.emplace(name, std::move(feature)).second ? Outcome::Taken : Outcome::Repeated;
    m_elements.push_back({name, outcome});
}

// What cannot be listed any more is reported beside the fault, which is on its way already.
void XmlConfigurationReading::NoteLost(const XmlDomNode& faulty) noexcept {
    try {
        m_elements.push_back({ListedName(faulty), Outcome::Faulty});
        for (auto element = ConfigurationElements::Next(faulty); element;
             element = ConfigurationElements::Next(*element)) {
            CPString name = ListedName(*element);
            if (!name.isEmpty()) m_elements.push_back({std::move(name), Outcome::Lost});
        }
    } catch (...) {
        ReportCaughtException();
    }
}
