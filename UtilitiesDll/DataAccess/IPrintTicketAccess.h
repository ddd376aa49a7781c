#pragma once

#include "LowLevelFacilities/Numbers/Dimension.h"
#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <tuple>
#include <utility>
#include <vector>

/// A print ticket and the capabilities that go with it, in plain names and values: what a feature may be,
/// what it is now, and setting it. Names of features and options go without a prefix. A feature that is not
/// known is no failure: the answer is false, empty, 0 or nothing done. Results are emptied first where an
/// operation says nothing else. The order of the operations is part of the interface. One thread at a time.
class IPrintTicketAccess {
public:
    /// Where a name belongs. The numbers are shared with callers.
    enum PrintTicketNamespace {
        KeywordsNamespace = 0,
        UserKeywordsNamespace = 1,
        XsiNamespace = 2,
        XsdNamespace = 3,
        FrameworkNamespace = 4,
        KeywordsV11Namespace = 6, // 5 is not used
        NoNamespace = 8,
    };

    /// What keeps a user from choosing an option.
    enum PrintSchemaConstrainedSettingNativeEnum {
        ConstrainedNone = 0,
        ConstrainedPrintTicketSettings = 1,
        ConstrainedAdminSettings = 2,
        ConstrainedDeviceSettings = 3,
    };

    /// An option of the capabilities: its name, its display name, where the name belongs (as number and as
    /// URI), and its constraint.
    using OptionCapability = std::tuple<CXString, CXString, PrintTicketNamespace, CXString,
                                        PrintSchemaConstrainedSettingNativeEnum>;
    /// The same for a media size, with its width and height.
    using MediaSizeCapability =
        std::tuple<CXString, CXString, PrintTicketNamespace, CXString,
                   PrintSchemaConstrainedSettingNativeEnum, std::pair<Dimension, Dimension>>;

    virtual ~IPrintTicketAccess() = default;

    [[nodiscard]] virtual bool IsSupportedPrintTicketFeature(const CXString& feature) const = 0;

    /// The capabilities.
    virtual void GetFeatureDisplayName(const CXString& feature, CXString& out) const = 0;
    /// The least and the greatest value; unchanged for a feature that has no range.
    virtual void GetRangeCapability(const CXString& feature, std::pair<int, int>& minMax) const = 0;
    /// In document order.
    virtual void GetCapabilitiesOptionFeature(const CXString& feature,
                                              std::vector<OptionCapability>& out) const = 0;
    virtual void GetCapabilitiesMediaSizeFeature(const CXString& feature,
                                                 std::vector<MediaSizeCapability>& out) const = 0;

    /// The ticket.
    virtual void GetCurrentValueOptionFeature(const CXString& feature, CXString& value) const = 0;
    /// In microns.
    virtual void GetCurrentValueMediaSizeFeature(const CXString& feature, CXString& option, Dimension& width,
                                                 Dimension& height) const = 0;
    [[nodiscard]] virtual int GetCurrentValueIntegerFeature(const CXString& feature) const = 0;
    virtual void GetCurrentValueStringFeature(const CXString& feature, CXString& value) const = 0;
    virtual void GetCurrentValueJobSimpleSecurePrintPassword(CXString& password) const = 0;
    /// As it stands in the ticket, not decoded.
    virtual void GetCurrentValueBase64EncodedCompleteDocSettings(CXString& text) const = 0;
    /// Empty only if the ticket has none; throws if that cannot be told.
    virtual void GetJobOrvelPublicDocSettingsXml(CPString& xml) const = 0;

    // Edits of the ticket.
    virtual void SetJobOrvelPublicDocSettingsXml(const CPString& xml) = 0;
    virtual void SetCurrentValueIntegerFeature(const CXString& feature, int value) = 0;
    virtual void SetCurrentValueStringFeature(const CXString& feature, const CXString& value) = 0;
    virtual void SetCurrentValueOptionFeature(const CXString& feature, const CXString& value) = 0;
    /// In microns.
    virtual void SetCurrentValueMediaSizeFeature(const CXString& feature, const CXString& option, int width,
                                                 int height) = 0;
    virtual void SetCurrentValueBase64EncodedCompleteDocSettings(const CXString& text) = 0;
    /// For an implementation that does not edit in place.
    virtual void CommitPrintTicketChanges() = 0;
    virtual void RemoveSecurePrintFeature() = 0;

    [[nodiscard]] virtual CPString GetPrintTicketImplementationNameForDebug() const = 0;
    /// What the flag asks for is left to the implementation.
    virtual void GetPrintTicketAsXmlString(CPString& out, bool flag) const = 0;
    virtual void GetPrintCapabilitiesAsXmlString(CPString& out, bool flag) const = 0;
};
