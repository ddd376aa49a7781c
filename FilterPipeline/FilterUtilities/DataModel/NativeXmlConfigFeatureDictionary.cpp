#include "DataModel/NativeXmlConfigFeatureDictionary.h"

#include "DataModel/FeatureNameTable.h"
#include "DataModel/NativeXmlConfigFeatureTable.h"

#include <memory>

namespace {

std::unique_ptr<NativeXmlConfigFeatureEntry> MakeEntry(const NativeXmlConfigFeatureRow& row) {
    const CPString featureEnum = MakeFeatureEnumString(row.feature);
    const CXString configurationName(row.xmlConfigName);
    const wchar_t* const ticketName = row.printTicketName == NativeXmlConfigFeatureRow::sameName
                                          ? configurationName.View().data()
                                          : row.printTicketName;
    if (row.parent == NativeXmlConfigFeatureRow::noParent) {
        return std::make_unique<NativeXmlConfigFeatureEntry>(row.feature, featureEnum.view().data(), row.mode,
                                                             row.syntax, row.cpssName, row.xmlConfigName,
                                                             row.ticketKind, ticketName);
    }
    return std::make_unique<NativeXmlConfigFeatureEntry>(row.feature, featureEnum.view().data(), row.mode,
                                                         row.syntax, row.cpssName, row.xmlConfigName,
                                                         row.ticketKind, ticketName, row.parent);
}

} // namespace

NativeXmlConfigFeatureDictionary::NativeXmlConfigFeatureDictionary()
    : m_nameIndex(m_dictionary.AddIndex(std::make_unique<NativeXmlConfigFeatureNameIndex>())),
      m_enumIndex(m_dictionary.AddIndex(std::make_unique<NativeXmlConfigFeatureEnumIndex>())) {
    for (const NativeXmlConfigFeatureRow& row : GetNativeXmlConfigFeatureRows())
        m_dictionary.AddEntry(MakeEntry(row));
}

NativeXmlConfigFeatureDictionary::~NativeXmlConfigFeatureDictionary() = default;

NativeXmlConfigFeatureDictionary* NativeXmlConfigFeatureDictionary::Instance() {
    return SingletonBase::Instance();
}
