#pragma once

#include <ObjectModel/XpsVocabulary.h>

namespace OvPipeline {

// The words of the format are the platform's.
using OvPlatform::DefaultContentType;
using OvPlatform::DescribeType;
using OvPlatform::documentContentType;
using OvPlatform::fontContentType;
using OvPlatform::IsMarkupNamespace;
using OvPlatform::IsObfuscatedFontType;
using OvPlatform::IsOpenXpsType;
using OvPlatform::IsResource;
using OvPlatform::KindName;
using OvPlatform::KindOf;
using OvPlatform::MarkupNamespace;
using OvPlatform::obfuscatedFontContentType;
using OvPlatform::pageContentType;
using OvPlatform::PartKind;
using OvPlatform::Relation;
using OvPlatform::RelationOf;
using OvPlatform::RelationType;
using OvPlatform::sequenceContentType;
using OvPlatform::ticketContentType;
using OvPlatform::XpsFlavour;

} // namespace OvPipeline
