#include "DataModel/NativeXmlConfigCpssOptionValueDictionary.h"

#include "DataModel/NativeXmlConfigCpssOptionValueTable.h"
#include "DataModel/NativeXmlConfigFeatureDictionary.h"
#include "DataModel/ValueNameTable.h"

#include <memory>

NativeXmlConfigCpssOptionValueDictionary::NativeXmlConfigCpssOptionValueDictionary()
    : m_valueIndex(
          m_dictionary.AddIndex(std::make_unique<NativeXmlConfigCpssOptionFeatureEnumAndValueEnumIndex>())),
      m_cpssNameIndex(m_dictionary.AddIndex(
          std::make_unique<NativeXmlConfigCpssOptionValueFeatureEnumAndCpssNameIndex>())) {
    const NativeXmlConfigFeatureDictionary& features = *NativeXmlConfigFeatureDictionary::Instance();
    for (const NativeXmlConfigCpssOptionValueRow& row : GetNativeXmlConfigCpssOptionValueRows()) {
        m_dictionary.AddEntry(std::make_unique<NativeXmlConfigCpssOptionValueEntry>(
            NativeXmlConfigCpssOptionValueEntry{row.cpssName, row.feature,
                                                features.GetEntry(row.feature).featureEnumString, row.value,
                                                MakeValueEnumString(row.value)}));
    }
}

NativeXmlConfigCpssOptionValueDictionary::~NativeXmlConfigCpssOptionValueDictionary() = default;

NativeXmlConfigCpssOptionValueDictionary* NativeXmlConfigCpssOptionValueDictionary::Instance() {
    return SingletonBase::Instance();
}
