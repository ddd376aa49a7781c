#pragma once

#include "Com/PlatformExport.h"
#include "PrintTicket/FrameworkCheck.h"
#include "PrintTicket/NamespacePrefixes.h"
#include "PrintTicket/SchemaModel.h"
#include "PrintTicket/SchemaXml.h"

#include <string_view>

namespace OvPlatform {

/// Reads a document that has passed the framework's check.
OV_PLATFORM_API SchemaDocument ReadSchemaDocument(const xmlDoc* document);

/// The namespace declarations of the framework's elements, in source order.
OV_PLATFORM_API NamespacePrefixes::Declarations DeclaredNamespaces(const xmlDoc* document);

/// Parses, checks and reads. Throws SchemaFormatError.
OV_PLATFORM_API SchemaDocument ReadSchemaDocument(std::string_view bytes, FrameworkCheck::Kind kind);

} // namespace OvPlatform
