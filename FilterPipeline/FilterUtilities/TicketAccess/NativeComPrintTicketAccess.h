#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "Media/PageMediaSizePtPcHelper.h"
#include "PrintSchema/DocumentQuery.h"
#include "PrintSchema/PrintCapabilitiesXmlDocument.h"
#include "PrintSchema/PrintTicketXmlDocument.h"
#include "TicketAccess/PrintTicketFeatureInformation.h"

#include <DataAccess/IPrintTicketAccess.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The access over two documents of the platform's DOM. Edits are made in the ticket at once. The
/// capabilities must not change while this object lives: it keeps what it found in them.
///
/// Each document is asked with its own prefixes. Failures of the documents are reported and not thrown:
/// results stay empty, and the ticket is as it was. Two operations throw, as what they would leave empty
/// means something: GetCurrentValueMediaSizeFeature and GetJobOrvelPublicDocSettingsXml.
class OV_FILTER_UTILITIES_API NativeComPrintTicketAccess : public IPrintTicketAccess {
public:
    /// The documents stay the caller's, and must outlive this object.
    NativeComPrintTicketAccess(PrintTicketXmlDocument& ticket, PrintCapabilitiesXmlDocument& capabilities);
    /// Throws what the documents throw for texts that are no ticket and no capabilities.
    NativeComPrintTicketAccess(const CXString& ticketXml, const CXString& capabilitiesXml);
    NativeComPrintTicketAccess(const NativeComPrintTicketAccess&) = delete;
    NativeComPrintTicketAccess& operator=(const NativeComPrintTicketAccess&) = delete;
    ~NativeComPrintTicketAccess() override;

    [[nodiscard]] bool IsSupportedPrintTicketFeature(const CXString& feature) const override;

    void GetFeatureDisplayName(const CXString& feature, CXString& out) const override;
    void GetRangeCapability(const CXString& feature, std::pair<int, int>& minMax) const override;
    /// An option without name has that of its first scored property's value.
    void GetCapabilitiesOptionFeature(const CXString& feature,
                                      std::vector<OptionCapability>& out) const override;
    /// A size that is missing is 0.
    void GetCapabilitiesMediaSizeFeature(const CXString& feature,
                                         std::vector<MediaSizeCapability>& out) const override;

    void GetCurrentValueOptionFeature(const CXString& feature, CXString& value) const override;
    /// Throws CPComException if the ticket has the feature, but not both of its sizes.
    void GetCurrentValueMediaSizeFeature(const CXString& feature, CXString& option, Dimension& width,
                                         Dimension& height) const override;
    [[nodiscard]] int GetCurrentValueIntegerFeature(const CXString& feature) const override;
    void GetCurrentValueStringFeature(const CXString& feature, CXString& value) const override;
    /// Throws CPExceptionInvalidArgument for a password that cannot be decoded.
    void GetCurrentValueJobSimpleSecurePrintPassword(CXString& password) const override;
    void GetCurrentValueBase64EncodedCompleteDocSettings(CXString& text) const override;
    /// Throws CPComException if the text cannot be read: who takes that for none would lose the settings.
    void GetJobOrvelPublicDocSettingsXml(CPString& xml) const override;

    void SetJobOrvelPublicDocSettingsXml(const CPString& xml) override;
    void SetCurrentValueIntegerFeature(const CXString& feature, int value) override;
    /// An empty text removes the parameter.
    void SetCurrentValueStringFeature(const CXString& feature, const CXString& value) override;
    void SetCurrentValueOptionFeature(const CXString& feature, const CXString& value) override;
    void SetCurrentValueMediaSizeFeature(const CXString& feature, const CXString& option, int width,
                                         int height) override;
    void SetCurrentValueBase64EncodedCompleteDocSettings(const CXString& text) override;
    /// Does nothing: edits are made in place.
    void CommitPrintTicketChanges() override;
    void RemoveSecurePrintFeature() override;

    [[nodiscard]] CPString GetPrintTicketImplementationNameForDebug() const override;
    /// The flag has no effect here.
    void GetPrintTicketAsXmlString(CPString& out, bool flag) const override;
    void GetPrintCapabilitiesAsXmlString(CPString& out, bool flag) const override;

private:
    /// What names with a prefix, which has its colon and is not empty, stand for.
    struct NamePrefix {
        CXString prefix;
        PrintTicketNamespace ns;
        const wchar_t* uri; // empty for one that is not known
    };
    /// The prefixes of a document.
    struct Prefixes {
        std::vector<NamePrefix> ofNames; // by prefix, each once
        std::map<PrintTicketNamespace, CComBSTR> prefixes;

        [[nodiscard]] const NamePrefix* Find(std::wstring_view prefix) const {
            const auto found = std::find_if(ofNames.begin(), ofNames.end(), [=](const NamePrefix& row) {
                return row.prefix.View() == prefix;
            });
            return found == ofNames.end() ? nullptr : &*found;
        }
    };
    /// How much of an option is read: each with what stands before it.
    enum class OptionExtent { Name, DisplayName, Size };
    /// An option of the capabilities as it is read, with its sizes as texts.
    struct CapabilitiesOption {
        CXString name;
        CXString displayName;
        PrintTicketNamespace ns = NoNamespace;
        CXString namespaceUri;
        PrintSchemaConstrainedSettingNativeEnum constrained = ConstrainedNone;
        CXString width;
        CXString height;
    };

    void Initialization();
    static Prefixes ReadPrefixes(const PrintSchemaXmlDocument& document);
    [[nodiscard]] const PrintSchemaXmlDocument& Document(bool ofCapabilities) const;
    [[nodiscard]] const Prefixes& PrefixesOf(bool ofCapabilities) const {
        return ofCapabilities ? m_capabilitiesPrefixes : m_ticketPrefixes;
    }

    /// Null for a feature that is not known.
    [[nodiscard]] const PrintTicketFeatureInformation* GetFeatureInformation(const CXString& feature) const;
    /// Null also for one whose namespace the ticket does not declare: it has no name to stand under.
    [[nodiscard]] const PrintTicketFeatureInformation* GetWritableFeature(const CXString& feature) const;
    /// Empty for a feature that is not known, or whose namespace the document does not declare.
    [[nodiscard]] DocumentQuery GetPrintTicketQueryForFeature(const CXString& feature,
                                                              bool forCapabilities) const;
    [[nodiscard]] CComPtr<IXMLDOMNode> FindFeature(const CXString& feature, bool inCapabilities) const;
    [[nodiscard]] bool IsInCapabilities(const PrintTicketFeatureInformation& row) const;
    [[nodiscard]] bool IsPasscodeSelectable() const;
    [[nodiscard]] bool IsSecurePrintSupported() const;

    [[nodiscard]] int GetJobCopiesMaximumValue() const;
    void GetJobSimpleSecurePrintAllowableRange(int& min, int& max) const;
    void GetJobPasscodeStringAllowableRange(int& min, int& max) const;
    void GetAllowableLengths(const CXString& parameter, int& min, int& max) const;

    [[nodiscard]] static CXString GetNodeValue(IXMLDOMNode* node);
    /// The attribute; null where there is none.
    [[nodiscard]] CComBSTR NameOf(IXMLDOMNode* node) const;
    [[nodiscard]] CXString TryToGetNameAttributeFromNode(IXMLDOMNode* node, bool ofCapabilities,
                                                         PrintTicketNamespace& ns, CXString& uri) const;
    [[nodiscard]] PrintSchemaConstrainedSettingNativeEnum
    TryToGetConstrainedAttributeFromNode(IXMLDOMNode* node) const;
    [[nodiscard]] std::vector<CapabilitiesOption> ReadCapabilitiesOptions(const CXString& feature,
                                                                          OptionExtent extent) const;
    [[nodiscard]] CapabilitiesOption ReadCapabilitiesOption(IXMLDOMNode* option, OptionExtent extent) const;
    [[nodiscard]] CXString ReadValueOfNamelessOption(const CXString& feature) const;
    [[nodiscard]] std::vector<MediaSizeCapability> ReadMediaSizes(const CXString& feature) const;
    [[nodiscard]] CComPtr<IXMLDOMNode> FindParameterValue(const CXString& feature) const;
    [[nodiscard]] CXString ReadParameterText(const CXString& feature) const;

    /// Null for a name without a prefix of the document.
    [[nodiscard]] const NamePrefix* FindPrefixOf(std::wstring_view name, bool ofCapabilities) const;
    [[nodiscard]] std::wstring_view LocalOf(std::wstring_view name, bool ofCapabilities) const;
    [[nodiscard]] static const wchar_t* GetNamespaceURIFromPrefixWithColon(const CXString& prefix);
    [[nodiscard]] CXString GetValueWithoutNamespace(std::wstring_view value, bool ofCapabilities,
                                                    PrintTicketNamespace& ns, CXString& uri) const;
    /// Empty if the document does not declare the namespace.
    [[nodiscard]] const CComBSTR& GetNamespaceComString(PrintTicketNamespace ns, bool forCapabilities) const;
    /// Of the ticket's prefixes, and of namespaces by URI.
    [[nodiscard]] PrintTicketNamespace GetNamespaceEnum(const CXString& uriOrPrefix) const;

    void ReplaceFeature(const PrintTicketFeatureInformation& row, const CXString& option,
                        PrintTicketNamespace optionNamespace);
    using ParameterMaker = std::function<void(const CComBSTR& prefix, IXMLDOMElement** init)>;
    /// With what `make` gives, or with nothing.
    void ReplaceParameter(const CXString& feature, const ParameterMaker& make);
    void SetMediaSizeOption(const PrintTicketFeatureInformation& row, const CXString& value);
    /// Whether the option that the ticket holds is of the namespace that its name is meant in: the one that
    /// is offered or written, and for names that are not offered any of Print Schema.
    [[nodiscard]] bool IsOptionOfMeantNamespace(const PrintTicketFeatureInformation& row,
                                                const CXString& option) const;
    using CustomNumber = PageMediaSizePtPcHelper::CustomNumber;
    /// The numbers, not yet read, of a name that stands for a custom size: those that the printer's option
    /// refers to, else width and height. None for other names.
    [[nodiscard]] std::vector<CustomNumber> CustomNumbers(const PrintTicketFeatureInformation& row,
                                                          const CXString& option) const;
    [[nodiscard]] bool IsCustomSizeWithoutNumbers(const PrintTicketFeatureInformation& row,
                                                  const CXString& option) const;
    /// A number of a custom size whose name is all that is given: that which the ticket holds, else the one
    /// that the printer gives it. Raises E_FAIL where there is none.
    [[nodiscard]] int ReadCustomNumber(const CustomNumber& number) const;
    void SetOfferedOption(const PrintTicketFeatureInformation& row, const CXString& value);
    void SetPagesPerSheet(const CXString& feature, const CXString& value);

    std::vector<PrintTicketFeatureInformation> m_features;
    Prefixes m_ticketPrefixes;
    std::unique_ptr<PrintTicketXmlDocument> m_ownedTicket;
    std::unique_ptr<PrintCapabilitiesXmlDocument> m_ownedCapabilities;
    PrintTicketXmlDocument* m_ticket;
    PrintCapabilitiesXmlDocument* m_capabilities;
    Prefixes m_capabilitiesPrefixes;
    // Of the capabilities, once it was asked.
    mutable std::vector<std::optional<bool>> m_isInCapabilities;                   // by row
    mutable std::unordered_map<CXString, std::vector<OptionCapability>> m_offered; // by feature
};
