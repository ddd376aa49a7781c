#include "AttributeBytesReaderWriter.h"

AttributeBytesReaderWriter::AttributeBytesReaderWriter() = default;

AttributeBytesReaderWriter::~AttributeBytesReaderWriter() = default;
