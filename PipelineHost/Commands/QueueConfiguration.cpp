#include "Commands/QueueConfiguration.h"

#include "Common/HostError.h"
#include "Report/FilterWords.h"

#include <Spooler/QueuePropertyBag.h>

#include <stdexcept>

namespace OvPipeline {

CComPtr<IPrinterPropertyBag> BagOf(const OvPlatform::QueueValues& values) {
    using OvPlatform::QueuePropertyBag;
    CComPtr<IPrinterPropertyBag> bag;
    if (const HRESULT hr = QueuePropertyBag::Create(values, QueuePropertyBag::Access::ReadOnly, &bag);
        FAILED(hr))
        throw HostError(hr, {}, "a bag of the queue cannot be read");
    return bag;
}

QueueSettings::QueueSettings(const OvPlatform::QueueFolder& queue)
    : m_bag(BagOf(queue.QueueProperties())),
      m_access(*m_bag, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere),
      m_settings(queue.PrinterName().c_str(), {}, m_access) {}

CPString ReadConfigurationText(const OvPlatform::QueueFolder& queue) {
    const FilterWords words;
    FilterWords::Forget();
    CPString xml;
    QueueSettings(queue).Access().GetOrvelQueuePrePostConfiguration(xml);
    if (const std::string trouble = FilterWords::First(); !trouble.empty())
        throw std::runtime_error(trouble + "; no configuration is enforced");
    return xml;
}

NativeXmlConfigurationFeatureSet ReadConfiguration(const OvPlatform::QueueFolder& queue) {
    return NativeXmlConfigurationFeatureSet(QueueSettings(queue).Access());
}

} // namespace OvPipeline
