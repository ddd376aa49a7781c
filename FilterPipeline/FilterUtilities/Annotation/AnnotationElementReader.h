#pragma once

#include "Annotation/AnnotationPrintTicketSettings.h"

class AttributeBytesIndexedList;
class XmlDomNode;

/// Reads the values of one annotation into a record that holds the defaults. A value that is not there, or
/// not specified, keeps its default; so do blank numbers, faces and colours.
class AnnotationElementReader {
public:
    using RawElement = AnnotationPrintTicketSettings::RawAnnotationElementPrintTicketAttributes;

    /// The entry of a collection in the public document settings. A member that cannot be read is reported,
    /// and keeps its default.
    static void Read(const XmlDomNode& entry, RawElement& element);
    /// The attributes of one.
    static void Read(const AttributeBytesIndexedList& attributes, RawElement& element);
    /// The words of a time stamp, separated by commas, in any order; others are passed over.
    static void ReadTimeStampWords(const CXString& list, RawElement& element);
};
