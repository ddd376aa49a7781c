#pragma once

// The keywords of Print Schema documents: namespaces, element names, and the names of features, options,
// properties and parameters. Local names only; a name in a document is a prefix with its colon and a local
// name, joined. All constants live as long as the library.

#include <ComSupport/FilterUtilitiesExport.h>

namespace PrintSchema {

// Selects the prefix of a name. There is no namespace 2.
enum MsPrintTicketNamespacesEnum : int { FrameworkNs = 0, KeywordsNs = 1, UserKeywordsNs = 3 };

// Namespaces of the documents that the driver reads and writes.
extern OV_FILTER_UTILITIES_API wchar_t const* const FRAMEWORK_URI;
extern OV_FILTER_UTILITIES_API wchar_t const* const FRAMEWORK_URI2;
extern OV_FILTER_UTILITIES_API wchar_t const* const KEYWORDS_URI;
extern OV_FILTER_UTILITIES_API wchar_t const* const KEYWORDSV11_URI;
extern OV_FILTER_UTILITIES_API wchar_t const* const KEYWORDSV12_URI;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_KEYWORDS_IPP;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_INST_URI;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_DEF_URI;
extern OV_FILTER_UTILITIES_API wchar_t const* const USER_KEYWORDS_URI;

// Prefixes of the private keywords, with their colon: the one that the driver wants, and the one that a
// document without a declaration of the private namespace is taken to use.
extern OV_FILTER_UTILITIES_API wchar_t const* const USER_KEYWORDS_NS_PREFIX;
extern OV_FILTER_UTILITIES_API wchar_t const* const BASE_DRIVER_DEFAULT_USER_KEYWORDS_NS_PREFIX;

// Root elements.
extern OV_FILTER_UTILITIES_API wchar_t const* const PRINTTICKET_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const PRINTCAPABILITIES_NAME;

// Elements, all in the framework namespace.
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE_ELEMENT_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const OPTION_ELEMENT_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCORED_PROP_ELEMENT_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const PROPERTY_ELEMENT_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const VALUE_ELEMENT_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAM_INIT_ELEMENT_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAM_REF_ELEMENT_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAM_DEF_ELEMENT_NAME;

// Attributes.
extern OV_FILTER_UTILITIES_API wchar_t const* const NAME_ATTRIBUTE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const CONSTRAINED_ATTRIBUTE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const SPECIFIED_ATTRIBUTE_NAME;

// The xsi:type attribute and the types it names.
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_TYPE;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_STRING;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_INTEGER;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_DECIMAL;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_QNAME;

// Properties of features and parameter definitions, and their values.
extern OV_FILTER_UTILITIES_API wchar_t const* const DISPLAYNAME_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const SELECTIONTYPE_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const PICKONE_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const IDENTITY_OPTION_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const IDENTITY_OPTION_VALUE_TRUE;
extern OV_FILTER_UTILITIES_API wchar_t const* const DATATYPE_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const DEFAULTVAL_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const MIN_LENGTH_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const MAX_LENGTH_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const MIN_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const MAX_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const MULTIPLE_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const UNITTYPE_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const MANDATORY_VALUE_NAME;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_CONDITIONAL;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_UNCONDITIONAL;
extern OV_FILTER_UTILITIES_API wchar_t const* const SCHEMA_OPTIONAL;

// Edge, fold and gutter of bound sheets.
namespace Binding {
extern OV_FILTER_UTILITIES_API wchar_t const* BIND_FEATURES[2];
extern OV_FILTER_UTILITIES_API wchar_t const* BIND_OPTIONS[14];
extern OV_FILTER_UTILITIES_API wchar_t const* const None_STRING;
extern OV_FILTER_UTILITIES_API wchar_t const* const BIND_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const BIND_PROP_REF_SUFFIX;
} // namespace Binding

// Words that stand for any feature.
namespace Common {
extern OV_FILTER_UTILITIES_API wchar_t const* const PrinterDefault;
} // namespace Common

// Whether the copies of a document come out as sets.
namespace DocumentCollate {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const Collated;
extern OV_FILTER_UTILITIES_API wchar_t const* const Uncollated;
} // namespace DocumentCollate

// Staples in each document.
namespace DocumentStaple {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const None;
extern OV_FILTER_UTILITIES_API wchar_t const* const SaddleStitch;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleBottomLeft;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleBottomRight;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleDualBottom;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleDualLeft;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleDualRight;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleDualTop;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleTopLeft;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleTopRight;
} // namespace DocumentStaple

// Whether the copies of a job come out as sets.
namespace JobCollateAllDocuments {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const Collated;
extern OV_FILTER_UTILITIES_API wchar_t const* const Uncollated;
} // namespace JobCollateAllDocuments

// Number of copies of a job.
namespace JobCopiesAllDocuments {
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAMETERNAME;
} // namespace JobCopiesAllDocuments

// Whether the driver collates in place of the device.
namespace JobDriverCollation {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const Off;
extern OV_FILTER_UTILITIES_API wchar_t const* const On;
} // namespace JobDriverCollation

// Sides printed.
namespace JobDuplexAllDocumentsContiguously {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* DUPLEX_OPTIONS[3];
} // namespace JobDuplexAllDocumentsContiguously

// Where a job's owner and name are printed.
namespace JobIdentification {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* JOB_ID_OPTIONS[4];
} // namespace JobIdentification

// Input tray of the whole job; its options are those of PageInputBin.
namespace JobInputBin {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
} // namespace JobInputBin

// Colour profile that suits the chosen settings best.
namespace JobOptimalDestinationColorProfile {
extern OV_FILTER_UTILITIES_API wchar_t const* const PROPERTY;
extern OV_FILTER_UTILITIES_API wchar_t const* PROFILESELECTOR[3]; // closed by a null
extern OV_FILTER_UTILITIES_API wchar_t const* const PATH_PROPERTY;
extern OV_FILTER_UTILITIES_API wchar_t const* const PROFILE_PROPERTY;
} // namespace JobOptimalDestinationColorProfile

// Whether a job waits for a passcode.
namespace JobPasscode {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const Off;
extern OV_FILTER_UTILITIES_API wchar_t const* const On;
} // namespace JobPasscode

// The passcode of a waiting job.
namespace JobPasscodeString {
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAMETERNAME;
} // namespace JobPasscodeString

// The password of a secure job.
namespace JobSimpleSecurePrint {
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAMETERNAME;
} // namespace JobSimpleSecurePrint

// Staples in the whole job.
namespace JobStapleAllDocuments {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const None;
extern OV_FILTER_UTILITIES_API wchar_t const* const SaddleStitch;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleBottomLeft;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleBottomRight;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleDualBottom;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleDualLeft;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleDualRight;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleDualTop;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleTopLeft;
extern OV_FILTER_UTILITIES_API wchar_t const* const StapleTopRight;
} // namespace JobStapleAllDocuments

// Client job data that travels in the ticket.
namespace JobOrvelClientJobData2Parameters {
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAMETERNAME;
} // namespace JobOrvelClientJobData2Parameters

// The attribute bytes of the job, as Base64 text.
namespace JobOrvelCompleteDocSettings {
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAMETERNAME;
} // namespace JobOrvelCompleteDocSettings

// Data of the driver's own.
namespace JobOrvelDriverData {
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAMETERNAME;
} // namespace JobOrvelDriverData

// The public document settings, as text.
namespace JobOrvelPublicDocSettings {
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAMETERNAME;
} // namespace JobOrvelPublicDocSettings

// The OCPT document of the job, as text.
namespace JobOrvelOpifJobTicket {
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAMETERNAME;
} // namespace JobOrvelOpifJobTicket

// Pages per sheet.
namespace NUp {
extern OV_FILTER_UTILITIES_API wchar_t const* NUP_FEATURES[2];
extern OV_FILTER_UTILITIES_API wchar_t const* const NUP_PROP;
} // namespace NUp

// Order of the pages on the sheet.
namespace NUp::PresentationDirection {
extern OV_FILTER_UTILITIES_API wchar_t const* const NUP_DIRECTION_FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* NUP_DIRECTION_OPTIONS[8];
} // namespace NUp::PresentationDirection

// Printing to the edge of the sheet.
namespace PageBorderless {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const Borderless;
extern OV_FILTER_UTILITIES_API wchar_t const* const None;
} // namespace PageBorderless

// Who manages colour.
namespace PageColorManagement {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const Device;
extern OV_FILTER_UTILITIES_API wchar_t const* const Driver;
extern OV_FILTER_UTILITIES_API wchar_t const* const None;
extern OV_FILTER_UTILITIES_API wchar_t const* const System;
} // namespace PageColorManagement

// The devmode of the application, as Base64 text.
namespace PageDevmodeSnapshot {
extern OV_FILTER_UTILITIES_API wchar_t const* const PARAMETERNAME;
} // namespace PageDevmodeSnapshot

// Rendering intent.
namespace PageICMRenderingIntent {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const AbsoluteColorimetric;
extern OV_FILTER_UTILITIES_API wchar_t const* const BusinessGraphics;
extern OV_FILTER_UTILITIES_API wchar_t const* const Photographs;
extern OV_FILTER_UTILITIES_API wchar_t const* const RelativeColorimetric;
} // namespace PageICMRenderingIntent

// The area that the device can print on, in microns.
namespace PageImageableArea {
extern OV_FILTER_UTILITIES_API wchar_t const* const PROPERTY;
extern OV_FILTER_UTILITIES_API wchar_t const* const PAGEIMAGEABLEAREA_EXTENTHEIGHT;
extern OV_FILTER_UTILITIES_API wchar_t const* const PAGEIMAGEABLEAREA_EXTENTWIDTH;
extern OV_FILTER_UTILITIES_API wchar_t const* const PAGEIMAGEABLEAREA_ORIGINHEIGHT;
extern OV_FILTER_UTILITIES_API wchar_t const* const PAGEIMAGEABLEAREA_ORIGINWIDTH;
} // namespace PageImageableArea

// The sheet and the area on it that the device can print on, in microns.
namespace PageImageableSize {
extern OV_FILTER_UTILITIES_API wchar_t const* const PROPERTY;
extern OV_FILTER_UTILITIES_API wchar_t const* PAGE_IMAGEABLE_PROPS[3];
extern OV_FILTER_UTILITIES_API wchar_t const* PAGE_IMAGEABLE_PROPS_AREA[4];
extern OV_FILTER_UTILITIES_API wchar_t const* const PAGEIMAGEABLESIZE_AREA;
extern OV_FILTER_UTILITIES_API wchar_t const* const PAGEIMAGEABLESIZE_HEIGHT;
extern OV_FILTER_UTILITIES_API wchar_t const* const PAGEIMAGEABLESIZE_WIDTH;
extern OV_FILTER_UTILITIES_API wchar_t const* const PAGE_IMAGEABLE_PROPERTY;
} // namespace PageImageableSize

// Input tray of a page.
namespace PageInputBin {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const AutoSelect;
extern OV_FILTER_UTILITIES_API wchar_t const* const AutoSheetFeeder;
extern OV_FILTER_UTILITIES_API wchar_t const* const Cassette;
extern OV_FILTER_UTILITIES_API wchar_t const* const Manual;
extern OV_FILTER_UTILITIES_API wchar_t const* const Tractor;
extern OV_FILTER_UTILITIES_API wchar_t const* const automatic;
extern OV_FILTER_UTILITIES_API wchar_t const* const BINTYPE_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const BINTYPE_PROP_VAL_CONTINUOUSFEED;
extern OV_FILTER_UTILITIES_API wchar_t const* const BINTYPE_PROP_VAL_SHEETFEED;
extern OV_FILTER_UTILITIES_API wchar_t const* const FEEDDIRECTION_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const FEEDDIRECTION_PROP_VAL_LONGEDGEFIRST;
extern OV_FILTER_UTILITIES_API wchar_t const* const FEEDDIRECTION_PROP_VAL_SHORTEDGEFIRST;
extern OV_FILTER_UTILITIES_API wchar_t const* const FEEDTYPE_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const FEEDTYPE_PROP_VAL_AUTOMATIC;
extern OV_FILTER_UTILITIES_API wchar_t const* const FEEDTYPE_PROP_VAL_MANUAL;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIACAPACITY_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIACAPACITY_PROP_VAL_HIGH;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIACAPACITY_PROP_VAL_STANDARD;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIAFACE_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIAFACE_PROP_VAL_FACEDOWN;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIAFACE_PROP_VAL_FACEUP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIAPATH_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIAPATH_PROP_VAL_SERPENTINE;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIAPATH_PROP_VAL_STRAIGHT;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASHEETCAPACITY_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZEAUTOSENSE_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZEAUTOSENSE_PROP_VAL_NONE;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZEAUTOSENSE_PROP_VAL_SUPPORTED;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIATYPEAUTOSENSE_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIATYPEAUTOSENSE_PROP_VAL_NONE;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIATYPEAUTOSENSE_PROP_VAL_SUPPORTED;
} // namespace PageInputBin

// Colour of the sheet.
namespace PageMediaColor {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
} // namespace PageMediaColor

// Size of the sheet, in microns.
namespace PageMediaSize {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const PAGESIZE_FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* PAGESIZE_PROPS[2];
extern OV_FILTER_UTILITIES_API wchar_t const* const CustomMediaSize;
extern OV_FILTER_UTILITIES_API wchar_t const* const PSCustomMediaSize;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZEHEIGHT_PARAM;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZEHEIGHT_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZEWIDTH_PARAM;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZEWIDTH_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_DRIVER_CUSTOM_KEYWORD_PREFIX;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_PSHEIGHTOFFSET_PARAM;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_PSHEIGHTOFFSET_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_PSHEIGHT_PARAM;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_PSHEIGHT_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_PSORIENTATION_PARAM;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_PSORIENTATION_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_PSWIDTHOFFSET_PARAM;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_PSWIDTHOFFSET_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_PSWIDTH_PARAM;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_PSWIDTH_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIASIZE_USER_FORM_KEYWORD_PREFIX;
} // namespace PageMediaSize

// Material of the sheet.
namespace PageMediaType {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const Archival; // its text differs from its name: deliberate
extern OV_FILTER_UTILITIES_API wchar_t const* const AutoSelect;
extern OV_FILTER_UTILITIES_API wchar_t const* const Bond;
extern OV_FILTER_UTILITIES_API wchar_t const* const CardStock;
extern OV_FILTER_UTILITIES_API wchar_t const* const Continuous;
extern OV_FILTER_UTILITIES_API wchar_t const* const EnvelopePlain;
extern OV_FILTER_UTILITIES_API wchar_t const* const EnvelopeWindow;
extern OV_FILTER_UTILITIES_API wchar_t const* const HighResolution;
extern OV_FILTER_UTILITIES_API wchar_t const* const Label;
extern OV_FILTER_UTILITIES_API wchar_t const* const None;
extern OV_FILTER_UTILITIES_API wchar_t const* const Photographic;
extern OV_FILTER_UTILITIES_API wchar_t const* const PhotographicGlossy;
extern OV_FILTER_UTILITIES_API wchar_t const* const PhotographicHighGloss;
extern OV_FILTER_UTILITIES_API wchar_t const* const PhotographicMatte;
extern OV_FILTER_UTILITIES_API wchar_t const* const PhotographicSemiGloss;
extern OV_FILTER_UTILITIES_API wchar_t const* const Plain;
extern OV_FILTER_UTILITIES_API wchar_t const* const Stationery;
extern OV_FILTER_UTILITIES_API wchar_t const* const TShirtTransfer;
extern OV_FILTER_UTILITIES_API wchar_t const* const TabStockFull;
extern OV_FILTER_UTILITIES_API wchar_t const* const TabStockPreCut;
extern OV_FILTER_UTILITIES_API wchar_t const* const Transparency;
extern OV_FILTER_UTILITIES_API wchar_t const* const BACKCOATING_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const COATING_PROP_VAL_GLOSSY;
extern OV_FILTER_UTILITIES_API wchar_t const* const COATING_PROP_VAL_HIGHGLOSS;
extern OV_FILTER_UTILITIES_API wchar_t const* const COATING_PROP_VAL_MATTE;
extern OV_FILTER_UTILITIES_API wchar_t const* const COATING_PROP_VAL_NONE;
extern OV_FILTER_UTILITIES_API wchar_t const* const COATING_PROP_VAL_SATIN;
extern OV_FILTER_UTILITIES_API wchar_t const* const COATING_PROP_VAL_SEMIGLOSS;
extern OV_FILTER_UTILITIES_API wchar_t const* const FRONTCOATING_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MATERIAL_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const MATERIAL_PROP_VAL_DISPLAY;
extern OV_FILTER_UTILITIES_API wchar_t const* const MATERIAL_PROP_VAL_PAPER;
extern OV_FILTER_UTILITIES_API wchar_t const* const MATERIAL_PROP_VAL_TRANSPARENCY;
extern OV_FILTER_UTILITIES_API wchar_t const* const MEDIATYPE_CUSTOM_TYPE_KEYWORD_PREFIX;
extern OV_FILTER_UTILITIES_API wchar_t const* const PREPRINTED_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const PREPRINTED_PROP_VAL_LETTERHEAD;
extern OV_FILTER_UTILITIES_API wchar_t const* const PREPRINTED_PROP_VAL_NONE;
extern OV_FILTER_UTILITIES_API wchar_t const* const PREPRINTED_PROP_VAL_PREPRINTED;
extern OV_FILTER_UTILITIES_API wchar_t const* const PREPUNCHED_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const PREPUNCHED_PROP_VAL_NONE;
extern OV_FILTER_UTILITIES_API wchar_t const* const PREPUNCHED_PROP_VAL_PREPUNCHED;
extern OV_FILTER_UTILITIES_API wchar_t const* const RECYCLED_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const RECYCLED_PROP_VAL_NONE;
extern OV_FILTER_UTILITIES_API wchar_t const* const RECYCLED_PROP_VAL_STANDARD;
extern OV_FILTER_UTILITIES_API wchar_t const* const WEIGHT_PROP;
} // namespace PageMediaType

// Orientation of the content.
namespace PageOrientation {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* OPTIONS[4];
} // namespace PageOrientation

// Colour or monochrome output.
namespace PageOutputColor {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const Color;
extern OV_FILTER_UTILITIES_API wchar_t const* const Grayscale;
extern OV_FILTER_UTILITIES_API wchar_t const* const Monochrome;
} // namespace PageOutputColor

// Quality of the output.
namespace PageOutputQuality {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const Automatic;
extern OV_FILTER_UTILITIES_API wchar_t const* const Draft;
extern OV_FILTER_UTILITIES_API wchar_t const* const Fax;
extern OV_FILTER_UTILITIES_API wchar_t const* const High;
extern OV_FILTER_UTILITIES_API wchar_t const* const Normal;
extern OV_FILTER_UTILITIES_API wchar_t const* const Photographic;
extern OV_FILTER_UTILITIES_API wchar_t const* const Text; // its text differs from its name: deliberate
} // namespace PageOutputQuality

// Resolution, in dots per inch.
namespace PageResolution {
extern OV_FILTER_UTILITIES_API wchar_t const* const FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* const RESOLUTIONX_PROP;
extern OV_FILTER_UTILITIES_API wchar_t const* const RESOLUTIONY_PROP;
} // namespace PageResolution

// Fitting of the page to the sheet.
namespace PageScaling {
extern OV_FILTER_UTILITIES_API wchar_t const* const SCALE_FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* SCALE_OPTIONS[7];
extern OV_FILTER_UTILITIES_API wchar_t const* CUST_SCALE_PROPS[4];
extern OV_FILTER_UTILITIES_API wchar_t const* CUST_SQR_SCALE_PROPS[3];
} // namespace PageScaling

// Where the scaled page lies on the sheet.
namespace PageScaling::OffsetAlignment {
extern OV_FILTER_UTILITIES_API wchar_t const* const SCALE_OFFSET_FEATURE;
extern OV_FILTER_UTILITIES_API wchar_t const* SCALE_OFFSET_OPTIONS[9];
} // namespace PageScaling::OffsetAlignment

// Values of the constrained attribute: what makes an option unavailable.
namespace constrained {
extern OV_FILTER_UTILITIES_API wchar_t const* const AdminSettings;
extern OV_FILTER_UTILITIES_API wchar_t const* const DeviceSettings;
extern OV_FILTER_UTILITIES_API wchar_t const* const None;
extern OV_FILTER_UTILITIES_API wchar_t const* const PrintTicketSettings;
} // namespace constrained

} // namespace PrintSchema
