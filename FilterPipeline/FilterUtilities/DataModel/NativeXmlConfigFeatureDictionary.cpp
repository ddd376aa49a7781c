#include "NativeXmlConfigFeatureDictionary.h"

#include "NativeXmlConfigFeatureTable.h"

#include <memory>
#include <string>

namespace {

std::unique_ptr<NativeXmlConfigFeatureEntry> MakeEntry(const NativeXmlConfigFeatureRow& row) {
    const std::string featureEnum = std::string("DataModelIds::") + row.enumerator;
    if (row.parent == NativeXmlConfigFeatureRow::noParent) {
        return std::make_unique<NativeXmlConfigFeatureEntry>(row.feature, featureEnum.c_str(), row.mode,
                                                             row.syntax, row.cpssName, row.xmlConfigName,
                                                             row.ticketKind, row.printTicketName);
    }
    return std::make_unique<NativeXmlConfigFeatureEntry>(row.feature, featureEnum.c_str(), row.mode,
                                                         row.syntax, row.cpssName, row.xmlConfigName,
                                                         row.ticketKind, row.printTicketName, row.parent);
}

} // namespace

NativeXmlConfigFeatureDictionary::NativeXmlConfigFeatureDictionary()
    : m_nameIndex(m_dictionary.AddIndex(std::make_unique<NativeXmlConfigFeatureNameIndex>())),
      m_enumIndex(m_dictionary.AddIndex(std::make_unique<NativeXmlConfigFeatureEnumIndex>())) {
    for (const NativeXmlConfigFeatureRow& row : GetNativeXmlConfigFeatureRows())
        m_dictionary.AddEntry(MakeEntry(row));
}

NativeXmlConfigFeatureDictionary::~NativeXmlConfigFeatureDictionary() = default;
