#include "EmbeddedSettings/AttributeBytesReaderWriter.h"

AttributeBytesReaderWriter::AttributeBytesReaderWriter() = default;

AttributeBytesReaderWriter::~AttributeBytesReaderWriter() = default;
