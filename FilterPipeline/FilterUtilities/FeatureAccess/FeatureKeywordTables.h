#pragma once

#include "DataModel/PrintSchemaKeywordLiterals.h"
#include "DataModel/ValueIds.h"

#include <span>
#include <string_view>

/// Words for values of features whose options have no rows in the dictionaries.
namespace FeatureKeywordTables {

enum class Use { ReadAndWrite, ReadOnly, WriteOnly };

struct Row {
    std::wstring_view keyword;
    DataModelIds::tagValueEnum value;
    Use use = Use::ReadAndWrite;
};
using Rows = std::span<const Row>;

/// The row of a keyword that may be read, compared unit by unit; null if there is none.
[[nodiscard]] const Row* FindKeyword(Rows rows, std::wstring_view keyword) noexcept;
/// The first row of a value that may be written; null if there is none.
[[nodiscard]] const Row* FindValue(Rows rows, DataModelIds::tagValueEnum value) noexcept;

// ---- Options of the ticket

namespace Keywords = PrintSchema::Keywords;

inline constexpr Row orientation[] = {
    {Keywords::PageOrientation::Portrait, DataModelIds::VAL_MS_ORIENTATION_PORTRAIT},
    {Keywords::PageOrientation::Landscape, DataModelIds::VAL_MS_ORIENTATION_LANDSCAPE},
};

inline constexpr Row collation[] = {
    {Keywords::DocumentCollate::Collated, DataModelIds::VAL_COLLATION_COLLATED},
    {Keywords::DocumentCollate::Uncollated, DataModelIds::VAL_COLLATION_UNCOLLATED},
};

inline constexpr Row margins[] = {
    {Keywords::PageBorderless::None, DataModelIds::VAL_MARGINS_NONE},
    {Keywords::PageBorderless::Borderless, DataModelIds::VAL_MARGINS_BORDERLESS},
};

inline constexpr Row staple[] = {
    {Keywords::JobStapleAllDocuments::StapleTopLeft, DataModelIds::VAL_FINISHING_1_STAPLE},
    {Keywords::JobStapleAllDocuments::StapleDualLeft, DataModelIds::VAL_FINISHING_2_STAPLES},
    {L"FourStaples", DataModelIds::VAL_FINISHING_4_STAPLES},
    {L"MultipleStaples", DataModelIds::VAL_FINISHING_MULTIPLE_STAPLES},
};

inline constexpr Row oneStaple[] = {
    {Keywords::JobStapleAllDocuments::StapleTopLeft, DataModelIds::VAL_FINISHING_1_STAPLE_TOP_LEFT},
    {Keywords::JobStapleAllDocuments::StapleBottomLeft, DataModelIds::VAL_FINISHING_1_STAPLE_BOTTOM_LEFT},
    {Keywords::JobStapleAllDocuments::StapleTopRight, DataModelIds::VAL_FINISHING_1_STAPLE_TOP_RIGHT},
    {Keywords::JobStapleAllDocuments::StapleBottomRight, DataModelIds::VAL_FINISHING_1_STAPLE_BOTTOM_RIGHT},
};

inline constexpr Row twoStaples[] = {
    {Keywords::JobStapleAllDocuments::StapleDualLeft, DataModelIds::VAL_FINISHING_2_STAPLES_LEFT},
    {Keywords::JobStapleAllDocuments::StapleDualTop, DataModelIds::VAL_FINISHING_2_STAPLES_TOP},
    {Keywords::JobStapleAllDocuments::StapleDualRight, DataModelIds::VAL_FINISHING_2_STAPLES_RIGHT},
    {Keywords::JobStapleAllDocuments::StapleDualBottom, DataModelIds::VAL_FINISHING_2_STAPLES_BOTTOM},
};

// ---- Texts of the public document settings

inline constexpr Row sides[] = {
    {L"one-sided", DataModelIds::VAL_SIDES_ONE_SIDED},
    {L"two-sided-long-edge", DataModelIds::VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE},
    {L"two-sided-short-edge", DataModelIds::VAL_SIDES_TWO_SIDED_FLIP_SHORT_EDGE},
};

inline constexpr Row centerStaple[] = {
    {L"center-staples-l", DataModelIds::VAL_FINISHING_CENTER_STAPLES_LEFT},
    {L"center-staples-t", DataModelIds::VAL_FINISHING_CENTER_STAPLES_TOP},
    {L"center-staples-r", DataModelIds::VAL_FINISHING_CENTER_STAPLES_RIGHT},
    {L"center-staples-b", DataModelIds::VAL_FINISHING_CENTER_STAPLES_BOTTOM},
};

inline constexpr Row fourStaples[] = {
    {L"4-staples-l", DataModelIds::VAL_FINISHING_4_STAPLES_L},
    {L"4-staples-t", DataModelIds::VAL_FINISHING_4_STAPLES_T},
    {L"4-staples-r", DataModelIds::VAL_FINISHING_4_STAPLES_R},
    {L"4-staples-b", DataModelIds::VAL_FINISHING_4_STAPLES_B},
};

inline constexpr Row coilPunch[] = {
    {L"coil-punch-ptlr", DataModelIds::VAL_FINISHING_COIL_PUNCH_PTLR},
    {L"coil-punch-pbll", DataModelIds::VAL_FINISHING_COIL_PUNCH_PBLL},
    {L"coil-punch-pllt", DataModelIds::VAL_FINISHING_COIL_PUNCH_PLLT},
    {L"coil-punch-prlb", DataModelIds::VAL_FINISHING_COIL_PUNCH_PRLB},
};

inline constexpr Row bookletFinishing[] = {
    {L"booklet-no-finishing", DataModelIds::VAL_FINISHING_BOOKLET_NO_FINISHING},
    {L"booklet-fold", DataModelIds::VAL_FINISHING_BOOKLET_FOLD},
    {L"booklet-fold-staple", DataModelIds::VAL_FINISHING_BOOKLET_FOLD_STAPLE},
};

inline constexpr Row unspecifiedFinishing[] = {
    {L"on", DataModelIds::VAL_FINISHING_UNSPECIFIED_ON},
    {L"off", DataModelIds::VAL_FINISHING_UNSPECIFIED_OFF},
};

/// Who made the settings of the job. What is read and what is written differ on purpose.
inline constexpr Row creatorName[] = {
    {L"windows-transform-filter", DataModelIds::VAL_CREATOR_NAME_WINDOWS_TRANSFORM_FILTER},
    {L"windows-advanced-ocpt-filter", DataModelIds::VAL_CREATOR_NAME_WINDOWS_ADVANCED_OCPT_FILTER},
    {L"windows-modern-ui-print-experience",
     DataModelIds::VAL_CREATOR_NAME_WINDOWS_MODERN_UI_PRINT_EXPERIENCE},
    {L"windows-ps-driver", DataModelIds::VAL_CREATOR_NAME_WINDOWS_PS_DRIVER},
    {L"windows-pcl5e-driver", DataModelIds::VAL_CREATOR_NAME_WINDOWS_PCL5E_DRIVER},
    {L"windows-pcl5c-driver", DataModelIds::VAL_CREATOR_NAME_WINDOWS_PCL5C_DRIVER, Use::WriteOnly},
    {L"windows-pcl6-driver", DataModelIds::VAL_CREATOR_NAME_WINDOWS_PCL6_DRIVER},
    {L"windows-raster-driver", DataModelIds::VAL_CREATOR_NAME_WINDOWS_RASTER_DRIVER},
    {L"windows-xps-driver", DataModelIds::VAL_CREATOR_NAME_WINDOWS_XPS_DRIVER},
    {L"windows-desktop-print-experience", DataModelIds::VAL_CREATOR_NAME_WINDOWS_DESKTOP_PRINT_EXPERIENCE},
    {L"windows-queue-settings-manager", DataModelIds::VAL_CREATOR_NAME_WINDOWS_QUEUE_SETTINGS_MANAGER},
    {L"unknown-application", DataModelIds::VAL_CREATOR_NAME_UNKNOWN_APPLICATION},
    {L"windows-job-event-manager", DataModelIds::VAL_CREATOR_NAME_WINDOWS_JOB_EVENT_MANAGER},
    {L"windows-job-tracker", DataModelIds::VAL_CREATOR_NAME_WINDOWS_JOB_TRACKER},
    {L"windows-pdf-driver", DataModelIds::VAL_CREATOR_NAME_WINDOWS_PDF_DRIVER},
    {L"windows-store-device-app-print-ui", DataModelIds::VAL_CREATOR_NAME_WINDOWS_STORE_DEVICE_APP_PRINT_UI,
     Use::ReadOnly},
    {L"windows-store-device-app-queue-manager",
     DataModelIds::VAL_CREATOR_NAME_WINDOWS_STORE_DEVICE_APP_QUEUE_MANAGER, Use::ReadOnly},
    {L"windows-pclm-driver", DataModelIds::VAL_CREATOR_NAME_WINDOWS_PCLM_DRIVER},
    {L"windows-psa-capabilities", DataModelIds::VAL_CREATOR_NAME_WINDOWS_PSA_CAPABILITIES, Use::ReadOnly},
    {L"windows-psa-print", DataModelIds::VAL_CREATOR_NAME_WINDOWS_PSA_PRINT, Use::ReadOnly},
};

/// What the job was printed from.
inline constexpr Row creatorNamePdl[] = {
    {L"unknown-application", DataModelIds::VAL_CREATOR_NAME_PDL_UNKNOWN_APPLICATION},
    {L"explorer", DataModelIds::VAL_CREATOR_NAME_PDL_EXPLORER},
    {L"printui", DataModelIds::VAL_CREATOR_NAME_PDL_PRINTUI},
};

} // namespace FeatureKeywordTables
