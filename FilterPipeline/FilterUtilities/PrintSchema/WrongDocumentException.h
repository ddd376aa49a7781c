#pragma once

#include <LowLevelFacilities/Failures/CPComException.h>

/// The document is none of its kind, whatever the platform does: it has no such root element (the result is
/// S_FALSE), or gives no prefix to a namespace whose names need one (E_FAIL).
class WrongDocumentException final : public CPComException {
public:
    explicit WrongDocumentException(const CPComException& failure) : CPComException(failure) {}
};
