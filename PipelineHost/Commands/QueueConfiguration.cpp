#include "Commands/QueueConfiguration.h"

#include "Report/FilterWords.h"

#include <Spooler/QueuePropertyBag.h>

#include <new>
#include <stdexcept>
#include <vector>

namespace OvPipeline {

namespace {

CComPtr<IPrinterPropertyBag> BagOf(const OvPlatform::QueueFolder& queue) {
    CComPtr<IPrinterPropertyBag> bag;
    if (FAILED(OvPlatform::QueuePropertyBag::Create(queue.QueueProperties(),
                                                    OvPlatform::QueuePropertyBag::Access::ReadOnly, &bag)))
        throw std::bad_alloc();
    return bag;
}

} // namespace

QueueSettings::QueueSettings(const OvPlatform::QueueFolder& queue)
    : m_bag(BagOf(queue)),
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

QueueConfiguration::QueueConfiguration(const OvPlatform::QueueFolder& queue)
    : features([&] {
          const FilterWords words;
          NativeXmlConfigurationFeatureSet read(QueueSettings(queue).Access());
          const std::vector<std::string> heard = words.Heard();
          if (!heard.empty()) trouble = heard.front();
          return read;
      }()) {}

} // namespace OvPipeline
