#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FeatureAccess/FeatureAnswer.h"
#include "FeatureAccess/WantedFeature.h"

#include <DataAccess/IPrintTicketAccess.h>

class NativeXmlConfigOptionValueDictionary;

/// A job's features in its ticket. A view of the access, which stays the caller's; without one, there is
/// nothing. What the access throws passes through.
class OV_FILTER_UTILITIES_API TicketSettings {
public:
    explicit TicketSettings(IPrintTicketAccess* access);

    /// Of the names that a feature has in tickets, the first that is supported; null if none is.
    [[nodiscard]] const CXString* FindSupportedName(const NativeXmlConfigFeatureEntry& names) const;

    // The answer to a question, and whether it decides: an option does that has a meaning, be it
    // "unspecified", a number whose parameter stands in the ticket, and a text that is not empty.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<DataModelIds::tagValueEnum>& answer) const;
    bool Ask(const WantedFeature& wanted, FeatureAnswer<int>& answer) const;
    bool Ask(const WantedFeature& wanted, FeatureAnswer<CXString>& answer) const;

    /// As it stands in the ticket; empty if there is none.
    [[nodiscard]] CXString GetOption(const CXString& ticketName) const;
    /// 0 if the parameter does not stand in the ticket.
    [[nodiscard]] int GetInteger(const CXString& ticketName) const;
    [[nodiscard]] bool IsOffered(const CXString& ticketName, std::wstring_view option) const;
    /// The word is the dictionary's for this feature, or that of the wanted words. A value that the wanted
    /// words do not write is not written. The ticket does not keep whether it is specified.
    void SetOption(const WantedFeature& wanted, DataModelIds::tagValueEnum value) const;

private:
    IPrintTicketAccess* m_access;
    const NativeXmlConfigOptionValueDictionary* m_options;
};
