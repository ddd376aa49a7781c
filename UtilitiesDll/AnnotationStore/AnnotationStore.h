#pragma once

#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"
#include "Xml/XmlDomNode.h"

#include <cstddef>
#include <map>

/// Definitions of annotations by name, each an XML element "annotation-col-api" as the public document
/// settings of a ticket hold it (docs/formats/annotation-store.md). Names are compared exactly. What is said
/// to throw throws CPExceptionInvalidArgument, with what is wrong, and changes nothing; failures of the
/// platform are thrown as CPComException. Belongs to one thread, which must be in a COM apartment.
class OV_UTILITIES_API AnnotationStore {
public:
    static constexpr std::size_t maxBytes = std::size_t{4} * 1024 * 1024;
    static constexpr std::size_t maxDefinitions = 1000;
    static constexpr std::size_t maxNameUnits = 255;

    /// Without definitions.
    AnnotationStore() = default;
    /// From the text of a store; a blank one is a store without definitions. A text that is no store throws
    /// with throwIfInvalid, and is a store without definitions otherwise.
    AnnotationStore(CPString&& xml, bool throwIfInvalid);

    /// The store as a document in UTF-8, definitions by the order of their names.
    [[nodiscard]] CPString GetAnnotationStoreXml() const;

    /// The element as text; empty if there is no definition of that name.
    [[nodiscard]] CPString GetAnnotationDefinitionByName(const CXString& name) const;
    /// The element in a document of its own, so that it may be put into another; empty if there is none.
    [[nodiscard]] XmlDomNode::Pointer GetAnnotationDefinitionByNameAsXmlDomNode(const CXString& name) const;

    /// The definition is a text as GetAnnotationDefinitionByName gives it. Throws if it is not well-formed or
    /// another element, if the name is blank, too long or cannot stand in XML, or beyond the limits.
    void AddOrReplaceAnnotationDefinition(const CXString& name, const CPString& definition);

private:
    void Read(const CPString& xml);

    std::map<CXString, CPString> m_definitions;
};
