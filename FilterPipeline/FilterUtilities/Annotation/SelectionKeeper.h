#pragma once

#include "Annotation/AnnotationPrintTicketSettings.h"

/// Puts the selection back at the end of a walk over the elements. It stands apart from the one that a filter
/// saves, which a walk must not overwrite.
class AnnotationPrintTicketSettings::SelectionKeeper {
public:
    explicit SelectionKeeper(AnnotationPrintTicketSettings& settings)
        : m_settings(settings), m_selected(settings.m_selected) {}
    SelectionKeeper(const SelectionKeeper&) = delete;
    SelectionKeeper& operator=(const SelectionKeeper&) = delete;
    ~SelectionKeeper() { m_settings.m_selected = m_selected; }

private:
    AnnotationPrintTicketSettings& m_settings;
    AnnotationElementSettings* m_selected;
};
