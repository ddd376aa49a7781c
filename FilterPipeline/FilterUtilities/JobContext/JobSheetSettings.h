#pragma once

// What a ticket says of the sheets of a job, as filters get it. A record begins with what holds where the
// ticket says nothing.

#include "DataModel/ValueIds.h"

#include <LowLevelFacilities/Numbers/Number.h>

#include <cstdint>

namespace PrintSchema {

namespace JobDuplexAllDocumentsContiguously {

enum class EDuplexOption : std::int32_t { OneSided, TwoSidedLongEdge, TwoSidedShortEdge };

} // namespace JobDuplexAllDocumentsContiguously

namespace JobIdentification {

enum class EJobIdentificationOption : std::int32_t {
    JobIdOff,
    JobIdBannerOn,
    JobIdPrintAllPages,
    JobIdPrintFirstPage
};

} // namespace JobIdentification

namespace NUp {

struct NUpData {
    std::int32_t featureFound = 0; ///< which feature answered: 0 that of the job, 1 that of the document
    std::int32_t pagesPerSheet = 1;
    DataModelIds::tagValueEnum outlines = DataModelIds::VAL_OUTLINES_OFF;
    DataModelIds::tagValueEnum margins = DataModelIds::VAL_MARGINS_NONE; ///< not set by the library
};

} // namespace NUp

namespace Binding {

struct BindingData {
    std::int32_t bookletType = 0;  ///< 0 no booklet, 2 a booklet, 3 one that is turned over at the other edge
    std::int32_t bindingSide = 13; ///< place in the ticket's keywords: none; not set by the library
    std::int32_t gutter = 0;       ///< between the pages of a booklet, in 96ths of an inch
    Number creep = {};             ///< what inner sheets give way, in 96ths of an inch, exact
};

} // namespace Binding

} // namespace PrintSchema
