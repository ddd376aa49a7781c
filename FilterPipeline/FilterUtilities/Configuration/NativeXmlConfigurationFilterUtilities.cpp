#include "Configuration/NativeXmlConfigurationFilterUtilities.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/MsSafeVariant.h"
#include "PropertyBags/NativeComPrinterPropertyBagAccess.h"
#include "PropertyBags/NativeComQueuePropertyBagAccess.h"

#include <DeviceDescription/OrvelDriverPropertyBag.h>

#include <atlcomcli.h>
#include <printerextension.h>

#include <vector>

namespace {

// Null where the pipeline has no such bag, and where it cannot be had, which is reported.
CComPtr<IPrinterPropertyBag> GetBag(IPrintPipelinePropertyBag& pipeline, const wchar_t* name) {
    MsSafeVariant value;
    CComPtr<IPrinterPropertyBag> bag;
    const HRESULT hr = pipeline.GetProperty(name, &value);
    if (hr == E_ELEMENT_NOT_FOUND || FAILED(ReportIfFailed(hr))) return bag;
    if (value.vt != VT_UNKNOWN || value.punkVal == nullptr) return bag;
    ReportIfFailed(
        value.punkVal->QueryInterface(__uuidof(IPrinterPropertyBag), reinterpret_cast<void**>(&bag)));
    return bag;
}

// A device whose description cannot be read has none that are known; what is enforced does not depend on
// them.
std::vector<CXString> GetInstallableOptions(IPrinterPropertyBag& driverBag) {
    NativeComPrinterPropertyBagAccess access(
        driverBag, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere);
    const OrvelDriverPropertyBag driver(access);
    try {
        return driver.GetSimpleOcapParser()->GetSupportedInstallableOptionFeaturesFromOcap();
    } catch (...) {
        ReportCaughtException();
        return {};
    }
}

} // namespace

NativeXmlConfigurationFeatureSet
NativeXmlConfigurationFilterUtilities::CreateNativeXmlConfigurationFeatureSetFromPipelineProperties(
    IPrintPipelinePropertyBag& bag, const CXString& printerName) {
    const OperationScope operation("NativeXmlConfigurationFilterUtilities::"
                                   "CreateNativeXmlConfigurationFeatureSetFromPipelineProperties");
    const CComPtr<IPrinterPropertyBag> driverBag = GetBag(bag, XPS_FP_DRIVER_PROPERTY_BAG);
    const CComPtr<IPrinterPropertyBag> queueBag = GetBag(bag, XPS_FP_QUEUE_PROPERTY_BAG);
    if (!driverBag || !queueBag) return {};
    NativeComPrinterPropertyBagAccess access(
        *queueBag, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere);
    NativeComQueuePropertyBagAccess queue(printerName, GetInstallableOptions(*driverBag), access);
    return NativeXmlConfigurationFeatureSet(queue);
}
