#pragma once

#include <DataAccess/IPrintTicketAccess.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

/// What the access to a ticket has to know of a feature.
struct PrintTicketFeatureInformation {
    enum Element : int { Feature = 0, Parameter = 1 };
    /// What in the capabilities shows that the feature is supported.
    enum Check : int {
        SecurePrintDefinition = 0, // the definition of the secure print parameter, with content
        Node = 1,                  // the feature, or the definition of the parameter
        Range = 2,                 // a range that is not empty
    };

    CXString name; // local
    int element;
    IPrintTicketAccess::PrintTicketNamespace ns;
    int check;
};
