#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FeatureAccess/IFilterFeatureAccess.h"
#include "FeatureAccess/RecordedAnswer.h"

#include <LowLevelFacilities/Ownership/OvlUniquePtr.h>

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class AttributeBytesIndexedList;
class FeaturePlaces;
class IPrintTicketAccess;
class MicrosoftXmlParser;
class NativeXmlConfigCpssOptionValueDictionary;
class NativeXmlConfigFeatureDictionary;
class NativeXmlConfigOptionValueDictionary;
class PrintTicketAttributeBytesReaderWriter;
class SimpleOcapParser;
class XmlDomNode;

/// What a job asks for, from the print ticket, the public document settings in it, the attribute bytes and
/// the device capabilities. There is no model that holds all features with their constraints: each feature
/// has a rule of its own (FeatureRuleTable.cpp), which asks the places that the driver's user interface and
/// the ticket really use for it. A feature without a rule has no answer.
///
/// A value of the document settings or of a ticket option that has no meaning here gives "unspecified"; what
/// a call of the ticket access throws passes through. Whatever the first question to the public document
/// settings is, it writes an empty document into a ticket that has none. A settings text that is no XML
/// counts as none.
class OV_FILTER_UTILITIES_API DataModelLessFeatureAccess : public IFilterFeatureAccess {
public:
    using IFilterFeatureAccess::tagFeatureEnum;
    using tagValueEnum = DataModelIds::tagValueEnum;

    // The capabilities, the ticket and the attribute bytes must outlive the object.

    /// Without attribute bytes. The printer's handle serves one question about the queue and may be null; the
    /// sizes are what GetOutputSize gives.
    DataModelLessFeatureAccess(const CXString& documentName, const CXString& userName,
                               const CXString& userDomainName, void* printer,
                               const Dimension& firstOutputSize, const Dimension& secondOutputSize,
                               SimpleOcapParser& capabilities, IPrintTicketAccess& ticket);
    /// A feature that the device requires and that no one specified has the factory default.
    DataModelLessFeatureAccess(const CXString& documentName, const CXString& userName,
                               const CXString& userDomainName, void* printer,
                               const Dimension& firstOutputSize, const Dimension& secondOutputSize,
                               SimpleOcapParser& capabilities, IPrintTicketAccess& ticket,
                               PrintTicketAttributeBytesReaderWriter& attributeBytes);
    /// Outside a job. The attribute bytes may be null.
    DataModelLessFeatureAccess(SimpleOcapParser& capabilities, IPrintTicketAccess& ticket,
                               PrintTicketAttributeBytesReaderWriter* attributeBytes);
    DataModelLessFeatureAccess(const DataModelLessFeatureAccess&) = delete;
    DataModelLessFeatureAccess& operator=(const DataModelLessFeatureAccess&) = delete;
    ~DataModelLessFeatureAccess() override;

    [[nodiscard]] bool IsSupportedFeature(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                          tagFeatureEnum feature) const override;
    [[nodiscard]] bool IsSupportedFeature(tagFeatureEnum parent, tagFeatureEnum feature) const override;
    /// Throws CPExceptionUnknownKeyRequest for a feature that the dictionary does not have.
    [[nodiscard]] bool IsSupportedFeature(tagFeatureEnum feature) const override;

    [[nodiscard]] CXString GetPrintJobDocumentName() const override;
    [[nodiscard]] CXString GetPrintJobUserName() const override;
    [[nodiscard]] CXString GetPrintJobUserDomainName() const override;

    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum grandparent, tagFeatureEnum parent,
                              tagFeatureEnum feature) const override;
    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const override;

    bool GetDimensionValue(tagFeatureEnum feature, Dimension& value) const override;

    bool GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent, unsigned int index,
                         tagFeatureEnum feature, int& value) const override;
    bool GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                         int& value) const override;
    bool GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature, int& value) const override;
    bool GetIntegerValue(tagFeatureEnum feature, int& value) const override;

    bool GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent, unsigned int index,
                        tagFeatureEnum feature, CXString& value) const override;
    bool GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                        CXString& value) const override;
    bool GetStringValue(tagFeatureEnum parent, tagFeatureEnum feature, CXString& value) const override;
    bool GetStringValue(tagFeatureEnum parent, unsigned int index, tagFeatureEnum feature,
                        CXString& value) const override;
    bool GetStringValue(tagFeatureEnum feature, CXString& value) const override;

    [[nodiscard]] SimpleOptionValue GetOptionValue(tagFeatureEnum feature) const override;
    [[nodiscard]] SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum grandparent,
                                                              tagFeatureEnum parent,
                                                              tagFeatureEnum feature) const override;
    [[nodiscard]] SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum parent,
                                                              tagFeatureEnum feature) const override;

    bool GetBooleanValue(tagFeatureEnum feature, bool& value) const override;

    bool GetDateTimeValue(tagFeatureEnum parent, tagFeatureEnum feature, UtcTime& value) const override;
    bool GetDateTimeValue(tagFeatureEnum feature, UtcTime& value) const override;

    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                             tagFeatureEnum feature) const override;
    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum parent, tagFeatureEnum feature) const override;
    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum feature) const override;

    bool GetBytesValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                       ByteBuffer& value) const override;
    bool GetBytesValue(tagFeatureEnum parent, tagFeatureEnum feature, ByteBuffer& value) const override;
    bool GetBytesValue(tagFeatureEnum feature, ByteBuffer& value) const override;

    [[nodiscard]] tagValueEnum GetEffectiveOrientation() const override;

    bool GetOutputSize(tagFeatureEnum feature, unsigned int index, Dimension& first,
                       Dimension& second) const override;
    bool GetOutputSize(tagFeatureEnum feature, Dimension& first, Dimension& second) const override;
    bool GetOutputSize(Dimension& first, Dimension& second) const override;

    [[nodiscard]] unsigned int
    GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum parent, tagFeatureEnum feature) const override;
    [[nodiscard]] unsigned int
    GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum feature) const override;

    [[nodiscard]] SimpleOptionValue GetFactoryDefaultOptionValue(tagFeatureEnum feature) const override;
    bool GetFactoryDefaultIntegerValue(tagFeatureEnum feature, int& value) const override;
    bool GetFactoryDefaultDimensionValue(tagFeatureEnum feature, Dimension& value) const override;

    /// The setters change the ticket, or the document settings as this object knows them; the ticket does not
    /// get the latter back. Features that cannot be set are passed over.
    void SetStringValue(tagFeatureEnum feature, const CXString& text, bool isSpecified) override;
    void SetOptionValue(tagFeatureEnum feature, const SimpleOptionValue& value) override;

    /// Empty.
    [[nodiscard]] CPString GetDumpDisplayString(const SimpleOptionValue& value) const override;

    /// The size of the media on which the job's pages come out.
    [[nodiscard]] SimpleOptionValue GetEffectiveJobLevelMediaSize() const;

    // The names of a feature; empty for one that the dictionary does not have.
    [[nodiscard]] CXString GetFeatureCpssName(tagFeatureEnum feature) const;
    [[nodiscard]] CXString GetFeaturePrintTicketName(tagFeatureEnum feature) const;
    [[nodiscard]] CPString GetFeatureEnumNameForDisplay(tagFeatureEnum feature) const;

    /// Those of the device's values of a feature (of its sub-features, if the flag says so) that the
    /// dictionary knows as the feature's options, in the device's order.
    [[nodiscard]] std::vector<tagValueEnum> GetSupportedValueEnums(tagFeatureEnum feature,
                                                                   bool wantSubFeatures) const;
    /// Empty if the feature has no such value.
    [[nodiscard]] CPString GetValueCppsNameFromFeatureAndValueEnums(tagFeatureEnum feature,
                                                                    tagValueEnum value) const;
    /// VAL_UNSPECIFIED if the feature has no value of that CPSS name.
    [[nodiscard]] tagValueEnum GetValueEnumFromFeatureAndName(tagFeatureEnum feature,
                                                              const CPString& cpssName) const;

    // The questions above, with the place that decided.
    [[nodiscard]] SimpleOptionValue GetOptionValue(tagFeatureEnum feature, FeatureValueSource& source) const;
    [[nodiscard]] SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum parent, tagFeatureEnum feature,
                                                              FeatureValueSource& source) const;
    bool GetIntegerValue(tagFeatureEnum feature, int& value, FeatureValueSource& source) const;
    bool GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature, int& value,
                         FeatureValueSource& source) const;
    bool GetDimensionValue(tagFeatureEnum feature, Dimension& value, FeatureValueSource& source) const;
    bool GetStringValue(tagFeatureEnum feature, CXString& value, FeatureValueSource& source) const;
    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum feature, FeatureValueSource& source) const;
    [[nodiscard]] SimpleOptionValue GetEffectiveJobLevelMediaSize(FeatureValueSource& source) const;
    /// To any question of the rules, asked once; a feature without a rule has no answer.
    [[nodiscard]] RecordedAnswer Answer(const FeatureQuestion& question) const;
    /// The place alone, of any question. Asks it anew.
    [[nodiscard]] FeatureValueSource GetSource(const FeatureQuestion& question) const;

private:
    /// Does the work of the questions.
    friend class FeatureRules;

    /// What the caller knows of the job.
    struct Job {
        CXString documentName;
        CXString userName;
        CXString userDomainName;
        void* printer = nullptr;
        Dimension firstOutputSize;
        Dimension secondOutputSize;
    };
    DataModelLessFeatureAccess(const Job& job, SimpleOcapParser& capabilities, IPrintTicketAccess& ticket,
                               PrintTicketAttributeBytesReaderWriter* attributeBytes,
                               bool enforceRequiredFeatures);

    void InitializeHolePunchCapabilityMembers();

    // Deliberate: most of the operations from here on are called by nobody. Their names are exported, and
    // stay; each is a forward to the places that do the work.

    /// Empty for a feature that the dictionary does not have.
    const CPString& CpssName(tagFeatureEnum feature) const;
    /// The features of the ticket that stand for one feature here, the first that is supported; null if none
    /// is.
    const wchar_t* SupportedPageLayoutFeature() const;
    const wchar_t* SupportedInputTrayFeature() const;
    const wchar_t* FirstSupported(const wchar_t* first, const wchar_t* second) const;

    // The public document settings. A status is 0 if the element is there, 1 if there is none, else that of
    // the failure. Elements are named by features' CPSS names, and found at any depth.

    /// Parses them on first use; null if there are none that can be parsed. What the ticket throws passes.
    MicrosoftXmlParser* InitializeOrvelPublicDocSettingsInitOnFirstUse() const;
    HRESULT GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(const CXString& cpssName,
                                                                    bool& isSpecified, CXString& value) const;
    HRESULT SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(const CXString& cpssName,
                                                                    const CXString& syntax, bool isSpecified,
                                                                    const CXString& value);
    HRESULT GetNumberOfChildrenForOrvelPublicDocSettingsFeature(const CXString& cpssName, bool& isSpecified,
                                                                unsigned int& count) const;
    bool IsOrvelPublicDocSettingsFeaturePresent(const CXString& cpssName) const;
    bool IsOrvelPublicDocSettingsFeaturePresentAtJobLevel(const CXString& cpssName) const;
    /// True if there is an element, also if its text is no option of the feature, which leaves the value.
    bool TryGetOptionValueFromOrvelPublicDocSettings(tagFeatureEnum feature, SimpleOptionValue& value) const;
    /// Empty if there is no such attribute.
    CXString GetAttributeAsString(XmlDomNode* node, const wchar_t* name) const;
    bool IsSpecified(XmlDomNode* node) const;

    // The attribute bytes. Without any: unspecified, 0, empty, false. With two features, the member of a
    // collection.
    SimpleOptionValue TryGetOptionValueFromAttributeBytesIfExists(tagFeatureEnum feature) const;
    SimpleOptionValue TryGetOptionValueFromAttributeBytesIfExists(tagFeatureEnum parent,
                                                                  tagFeatureEnum feature) const;
    int TryGetIntegerValueFromAttributeBytesIfExists(tagFeatureEnum feature, bool& isSpecified) const;
    int TryGetIntegerValueFromAttributeBytesIfExists(tagFeatureEnum parent, tagFeatureEnum feature,
                                                     bool& isSpecified) const;
    Dimension TryGetDimensionValueFromAttributeBytesIfExists(tagFeatureEnum feature, bool& isSpecified) const;
    Dimension TryGetDimensionValueFromAttributeBytesIfExists(tagFeatureEnum parent, tagFeatureEnum feature,
                                                             bool& isSpecified) const;
    CXString TryGetStringValueFromAttributeBytesIfExists(tagFeatureEnum feature, bool& isSpecified) const;
    bool TryGetIsSpecifiedFromAttributeBytesIfExists(tagFeatureEnum feature) const;
    /// The members of a collection, or of one inside another one; false if there is none.
    bool TryGetCollection(tagFeatureEnum feature, AttributeBytesIndexedList& members) const;
    bool TryGetCollection(tagFeatureEnum parent, tagFeatureEnum feature,
                          AttributeBytesIndexedList& members) const;
    bool HasAttributeBytes() const;

    /// An element hides the attribute.
    bool GetStringFromDocumentOrAttributeBytes(const CXString& cpssName, tagFeatureEnum feature,
                                               CXString& value, FeatureValueSource& source) const;
    bool GetJobName(CXString& name, FeatureValueSource& source) const;

    // Where required features are enforced: gives a feature that the device requires and no one specified the
    // factory default, and says whether it did. The result is specified even if the device has no default.
    bool EnforceRequiredOptionFeatureIfNecessary(tagFeatureEnum feature, SimpleOptionValue& value) const;
    bool EnforceRequiredIntegerFeatureIfNecessary(tagFeatureEnum feature, int& value,
                                                  bool& isSpecified) const;
    bool EnforceRequiredDimensionFeatureIfNecessary(tagFeatureEnum feature, Dimension& value,
                                                    bool& isSpecified) const;
    bool MustEnforce(tagFeatureEnum feature, bool isSpecified) const;

    const NativeXmlConfigFeatureDictionary* m_featureDictionary;
    const NativeXmlConfigOptionValueDictionary* m_optionValueDictionary;
    const NativeXmlConfigCpssOptionValueDictionary* m_cpssOptionValueDictionary;
    CXString m_documentName;
    CXString m_userName;
    CXString m_userDomainName;
    void* m_printer;
    Dimension m_firstOutputSize;
    Dimension m_secondOutputSize;
    SimpleOcapParser& m_capabilities;
    IPrintTicketAccess& m_ticket;
    mutable OvlUniquePtr<MicrosoftXmlParser> m_publicSettingsParser; // null until first use
    PrintTicketAttributeBytesReaderWriter* m_attributeBytes;         // may be null
    bool m_enforceRequiredFeatures;
    bool m_holePunchFeatureSupported = false;
    bool m_twoHolePositionsSupported = false;
    bool m_threeHolePositionsSupported = false;
    bool m_fourHolePositionsSupported = false;
    bool m_anyHolePositionsSupported = false;
    bool m_twoHoleSupported = false; // as a count or as positions
    bool m_threeHoleSupported = false;
    bool m_fourHoleSupported = false;
    bool m_holeCountsOnly = false;
    bool m_holePunchOnOnly = false;
    mutable std::optional<std::uint64_t> m_unparsableSettings; // the hash of a text that is no XML
    std::unique_ptr<const FeaturePlaces> m_places;             // views of the above
};
