#include "LowLevelFacilities/Failures/CPExceptionDuplicateDictionaryIndexEntry.h"

CPExceptionDuplicateDictionaryIndexEntry::CPExceptionDuplicateDictionaryIndexEntry(std::string&& message,
                                                                                   unsigned int lastError,
                                                                                   DebugContextCopy context)
    : CPException(std::move(message), lastError, std::move(context)) {}

CPExceptionDuplicateDictionaryIndexEntry::~CPExceptionDuplicateDictionaryIndexEntry() = default;

std::string CPExceptionDuplicateDictionaryIndexEntry::getExceptionType() const {
    return "CPExceptionDuplicateDictionaryIndexEntry";
}
