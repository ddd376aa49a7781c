#pragma once

#include "Parts/FixedPagePart.h"

#include <Xml/AttributeBound.h>
#include <Xml/XmlPointer.h>

#include <memory>
#include <optional>

namespace OvPipeline {

/// The references of a sequence to its documents, or of a document to its pages, one after another: memory
/// does not grow with their number. Throws InputError (with the line) for markup that cannot be read, a DTD,
/// another root, a reference without a source, and for what the package's bytes throw.
class ReferenceList {
public:
    enum class Of { Sequence, Document };

    ReferenceList(Of kind, const PartCore& part);
    ReferenceList(const ReferenceList&) = delete;
    ReferenceList& operator=(const ReferenceList&) = delete;

    /// Nothing at the end. The source is as written.
    std::optional<PageReference> Next();

private:
    static int ReadBytes(void* context, char* buffer, int size);
    bool Advance();
    void CheckRoot();
    PageReference TakeReference();
    void TakeLinkTargets(PageReference& reference);
    std::string Attribute(const char* name) const;
    bool IsElement(const char* name) const;
    [[noreturn]] void Refuse(const std::string& problem) const;

    Of m_kind;
    std::string m_partName;
    std::unique_ptr<ByteReader> m_bytes;
    OvPlatform::AttributeBound m_attributes;
    std::exception_ptr m_readFailure;
    OvPlatform::XmlPointer<_xmlTextReader> m_reader;
    bool m_started = false;
    bool m_ended = false;
};

} // namespace OvPipeline
