#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/ValueIds.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <printerextension.h>

/// What programs that run beside a job ask of a queue's settings, out of its bag, and of a user's, out of the
/// user's. What cannot be read is reported, and counts as not set. The thread must be in a COM apartment.
class OV_FILTER_UTILITIES_API PrintTimeUiHelper {
public:
    PrintTimeUiHelper();

    /// How the device is talked to, in the settings' own word, and where it is to be found if that was set by
    /// hand; both empty otherwise. False where the queue does not say, and for a null bag.
    static bool GetBidiSettingsFromQueueSettings(IPrinterPropertyBag* bag, CXString& mode, CXString& address);

    /// For which jobs the user is asked for accounting data. VAL_ACCT_PROMPT_NEVER for a device without
    /// accounting, a queue that does not say, and a null bag.
    static DataModelIds::tagValueEnum GetPrintTimeAccountingPromptOption(IPrinterPropertyBag* bag);
    static bool IsPrintTimeAccountingPromptEnabledByQueueSettings(IPrinterPropertyBag* bag);

    // On unless the queue says that they are off; on for a null bag, too.
    static bool PrintTimePromptToggleEnabled(IPrinterPropertyBag* bag);
    static bool BlackAndWhiteOnlyToggleEnabled(IPrinterPropertyBag* bag);

    // Off unless the queue says that they are on; off for a null bag, too.
    static bool IsSecurePrintOnlyEnabled(IPrinterPropertyBag* bag);
    static bool IsSecurePrintViaLoginEnabled(IPrinterPropertyBag* bag);
    static bool IsFaxEnabledByQueueSettings(IPrinterPropertyBag* bag);

    /// On unless the user wants to be told of no job: neither completed, nor altered, nor failed.
    static bool IsJobTrackerEnabledByUserPreferences(IPrinterPropertyBag& bag);
};
