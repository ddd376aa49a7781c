#pragma once

/// Which of the places that know a job's features decided a value.
enum class FeatureValueSource {
    None, // no place has a value
    PrintTicket,
    PublicDocumentSettings,
    AttributeBytes,
    FactoryDefault, // of the device
    Rule,           // what holds when no place has a value, or what two of them make together
    Queue,          // the printer, whatever the job asks for
};
