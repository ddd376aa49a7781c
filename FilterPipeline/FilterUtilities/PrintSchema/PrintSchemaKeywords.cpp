#include "PrintSchemaKeywords.h"

namespace PrintSchema {

wchar_t const* const FRAMEWORK_URI =
    L"http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";
wchar_t const* const FRAMEWORK_URI2 =
    L"http://schemas.microsoft.com/windows/2013/12/printing/printschemaframework2";
wchar_t const* const KEYWORDS_URI =
    L"http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords";
wchar_t const* const KEYWORDSV11_URI =
    L"http://schemas.microsoft.com/windows/2013/05/printing/printschemakeywordsv11";
wchar_t const* const KEYWORDSV12_URI =
    L"http://schemas.microsoft.com/windows/2013/12/printing/printschemakeywordsv12";
wchar_t const* const SCHEMA_KEYWORDS_IPP =
    L"http://schemas.microsoft.com/windows/2018/04/printing/printschemakeywords/Ipp";
wchar_t const* const SCHEMA_INST_URI = L"http://www.w3.org/2001/XMLSchema-instance";
wchar_t const* const SCHEMA_DEF_URI = L"http://www.w3.org/2001/XMLSchema";
wchar_t const* const USER_KEYWORDS_URI =
    L"http://schemas.orvel.example/enterprise/print/driver/native/printSchemaPrivateKeywords/2006/11";

wchar_t const* const USER_KEYWORDS_NS_PREFIX = L"ok:";
wchar_t const* const BASE_DRIVER_DEFAULT_USER_KEYWORDS_NS_PREFIX = L"ns0000:";

wchar_t const* const PRINTTICKET_NAME = L"PrintTicket";
wchar_t const* const PRINTCAPABILITIES_NAME = L"PrintCapabilities";

wchar_t const* const FEATURE_ELEMENT_NAME = L"Feature";
wchar_t const* const OPTION_ELEMENT_NAME = L"Option";
wchar_t const* const SCORED_PROP_ELEMENT_NAME = L"ScoredProperty";
wchar_t const* const PROPERTY_ELEMENT_NAME = L"Property";
wchar_t const* const VALUE_ELEMENT_NAME = L"Value";
wchar_t const* const PARAM_INIT_ELEMENT_NAME = L"ParameterInit";
wchar_t const* const PARAM_REF_ELEMENT_NAME = L"ParameterRef";
wchar_t const* const PARAM_DEF_ELEMENT_NAME = L"ParameterDef";

wchar_t const* const NAME_ATTRIBUTE_NAME = L"name";
wchar_t const* const CONSTRAINED_ATTRIBUTE_NAME = L"constrained";
wchar_t const* const SPECIFIED_ATTRIBUTE_NAME = L"specified";

wchar_t const* const SCHEMA_TYPE = L"type";
wchar_t const* const SCHEMA_STRING = L"string";
wchar_t const* const SCHEMA_INTEGER = L"integer";
wchar_t const* const SCHEMA_DECIMAL = L"decimal";
wchar_t const* const SCHEMA_QNAME = L"QName";

wchar_t const* const DISPLAYNAME_VALUE_NAME = L"DisplayName";
wchar_t const* const SELECTIONTYPE_VALUE_NAME = L"SelectionType";
wchar_t const* const PICKONE_VALUE_NAME = L"PickOne";
wchar_t const* const IDENTITY_OPTION_VALUE_NAME = L"IdentityOption";
wchar_t const* const IDENTITY_OPTION_VALUE_TRUE = L"True";
wchar_t const* const DATATYPE_VALUE_NAME = L"DataType";
wchar_t const* const DEFAULTVAL_VALUE_NAME = L"DefaultValue";
wchar_t const* const MIN_LENGTH_NAME = L"MinLength";
wchar_t const* const MAX_LENGTH_NAME = L"MaxLength";
wchar_t const* const MIN_VALUE_NAME = L"MinValue";
wchar_t const* const MAX_VALUE_NAME = L"MaxValue";
wchar_t const* const MULTIPLE_VALUE_NAME = L"Multiple";
wchar_t const* const UNITTYPE_VALUE_NAME = L"UnitType";
wchar_t const* const MANDATORY_VALUE_NAME = L"Mandatory";
wchar_t const* const SCHEMA_CONDITIONAL = L"Conditional";
wchar_t const* const SCHEMA_UNCONDITIONAL = L"Unconditional";
wchar_t const* const SCHEMA_OPTIONAL = L"Optional";

namespace Binding {
wchar_t const* BIND_FEATURES[2] = {L"JobBindAllDocuments", L"DocumentBinding"};
wchar_t const* BIND_OPTIONS[14] = {L"Bale",
                                   L"BindBottom",
                                   L"BindLeft",
                                   L"BindRight",
                                   L"BindTop",
                                   L"Booklet",
                                   L"EdgeStitchBottom",
                                   L"EdgeStitchLeft",
                                   L"EdgeStitchRight",
                                   L"EdgeStitchTop",
                                   L"Fold",
                                   L"JogOffset",
                                   L"Trim",
                                   L"None"};
wchar_t const* const None_STRING = L"None";
wchar_t const* const BIND_PROP = L"BindingGutter";
wchar_t const* const BIND_PROP_REF_SUFFIX = L"Gutter";
} // namespace Binding

namespace Common {
wchar_t const* const PrinterDefault = L"printer-default";
} // namespace Common

namespace DocumentCollate {
wchar_t const* const FEATURE = L"DocumentCollate";
wchar_t const* const Collated = L"Collated";
wchar_t const* const Uncollated = L"Uncollated";
} // namespace DocumentCollate

namespace DocumentStaple {
wchar_t const* const FEATURE = L"DocumentStaple";
wchar_t const* const None = L"None";
wchar_t const* const SaddleStitch = L"SaddleStitch";
wchar_t const* const StapleBottomLeft = L"StapleBottomLeft";
wchar_t const* const StapleBottomRight = L"StapleBottomRight";
wchar_t const* const StapleDualBottom = L"StapleDualBottom";
wchar_t const* const StapleDualLeft = L"StapleDualLeft";
wchar_t const* const StapleDualRight = L"StapleDualRight";
wchar_t const* const StapleDualTop = L"StapleDualTop";
wchar_t const* const StapleTopLeft = L"StapleTopLeft";
wchar_t const* const StapleTopRight = L"StapleTopRight";
} // namespace DocumentStaple

namespace JobCollateAllDocuments {
wchar_t const* const FEATURE = L"JobCollateAllDocuments";
wchar_t const* const Collated = L"Collated";
wchar_t const* const Uncollated = L"Uncollated";
} // namespace JobCollateAllDocuments

namespace JobCopiesAllDocuments {
wchar_t const* const PARAMETERNAME = L"JobCopiesAllDocuments";
} // namespace JobCopiesAllDocuments

namespace JobDriverCollation {
wchar_t const* const FEATURE = L"JobDriverCollation";
wchar_t const* const Off = L"Off";
wchar_t const* const On = L"On";
} // namespace JobDriverCollation

namespace JobDuplexAllDocumentsContiguously {
wchar_t const* const FEATURE = L"JobDuplexAllDocumentsContiguously";
wchar_t const* DUPLEX_OPTIONS[3] = {L"OneSided", L"TwoSidedLongEdge", L"TwoSidedShortEdge"};
} // namespace JobDuplexAllDocumentsContiguously

namespace JobIdentification {
wchar_t const* const FEATURE = L"JobIdentification";
wchar_t const* JOB_ID_OPTIONS[4] = {L"JobIdOff", L"JobIdBannerOn", L"JobIdPrintAllPages",
                                    L"JobIdPrintFirstPage"};
} // namespace JobIdentification

namespace JobInputBin {
wchar_t const* const FEATURE = L"JobInputBin";
} // namespace JobInputBin

namespace JobOptimalDestinationColorProfile {
wchar_t const* const PROPERTY = L"JobOptimalDestinationColorProfile";
wchar_t const* PROFILESELECTOR[3] = {L"RGB", L"CMYKICC", nullptr};
wchar_t const* const PATH_PROPERTY = L"Path";
wchar_t const* const PROFILE_PROPERTY = L"Profile";
} // namespace JobOptimalDestinationColorProfile

namespace JobPasscode {
wchar_t const* const FEATURE = L"JobPasscode";
wchar_t const* const Off = L"Off";
wchar_t const* const On = L"On";
} // namespace JobPasscode

namespace JobPasscodeString {
wchar_t const* const PARAMETERNAME = L"JobPasscodeString";
} // namespace JobPasscodeString

namespace JobSimpleSecurePrint {
wchar_t const* const PARAMETERNAME = L"JobSimpleSecurePrint";
} // namespace JobSimpleSecurePrint

namespace JobStapleAllDocuments {
wchar_t const* const FEATURE = L"JobStapleAllDocuments";
wchar_t const* const None = L"None";
wchar_t const* const SaddleStitch = L"SaddleStitch";
wchar_t const* const StapleBottomLeft = L"StapleBottomLeft";
wchar_t const* const StapleBottomRight = L"StapleBottomRight";
wchar_t const* const StapleDualBottom = L"StapleDualBottom";
wchar_t const* const StapleDualLeft = L"StapleDualLeft";
wchar_t const* const StapleDualRight = L"StapleDualRight";
wchar_t const* const StapleDualTop = L"StapleDualTop";
wchar_t const* const StapleTopLeft = L"StapleTopLeft";
wchar_t const* const StapleTopRight = L"StapleTopRight";
} // namespace JobStapleAllDocuments

namespace JobOrvelClientJobData2Parameters {
wchar_t const* const PARAMETERNAME = L"JobOrvelClientJobData2Parameters";
} // namespace JobOrvelClientJobData2Parameters

namespace JobOrvelCompleteDocSettings {
wchar_t const* const PARAMETERNAME = L"JobOrvelCompleteDocSettings";
} // namespace JobOrvelCompleteDocSettings

namespace JobOrvelDriverData {
wchar_t const* const PARAMETERNAME = L"JobOrvelDriverData";
} // namespace JobOrvelDriverData

namespace JobOrvelPublicDocSettings {
wchar_t const* const PARAMETERNAME = L"JobOrvelPublicDocSettings";
} // namespace JobOrvelPublicDocSettings

namespace JobOrvelOpifJobTicket {
wchar_t const* const PARAMETERNAME = L"JobOrvelOpifJobTicket";
} // namespace JobOrvelOpifJobTicket

namespace NUp {
wchar_t const* NUP_FEATURES[2] = {L"JobNUpAllDocumentsContiguously", L"DocumentNUp"};
wchar_t const* const NUP_PROP = L"PagesPerSheet";
} // namespace NUp

namespace NUp::PresentationDirection {
wchar_t const* const NUP_DIRECTION_FEATURE = L"PresentationDirection";
wchar_t const* NUP_DIRECTION_OPTIONS[8] = {L"RightBottom", L"BottomRight", L"LeftBottom", L"BottomLeft",
                                           L"RightTop",    L"TopRight",    L"LeftTop",    L"TopLeft"};
} // namespace NUp::PresentationDirection

namespace PageBorderless {
wchar_t const* const FEATURE = L"PageBorderless";
wchar_t const* const Borderless = L"Borderless";
wchar_t const* const None = L"None";
} // namespace PageBorderless

namespace PageColorManagement {
wchar_t const* const FEATURE = L"PageColorManagement";
wchar_t const* const Device = L"Device";
wchar_t const* const Driver = L"Driver";
wchar_t const* const None = L"None";
wchar_t const* const System = L"System";
} // namespace PageColorManagement

namespace PageDevmodeSnapshot {
wchar_t const* const PARAMETERNAME = L"PageDevmodeSnapshot";
} // namespace PageDevmodeSnapshot

namespace PageICMRenderingIntent {
wchar_t const* const FEATURE = L"PageICMRenderingIntent";
wchar_t const* const AbsoluteColorimetric = L"AbsoluteColorimetric";
wchar_t const* const BusinessGraphics = L"BusinessGraphics";
wchar_t const* const Photographs = L"Photographs";
wchar_t const* const RelativeColorimetric = L"RelativeColorimetric";
} // namespace PageICMRenderingIntent

namespace PageImageableArea {
wchar_t const* const PROPERTY = L"ImageableArea";
wchar_t const* const PAGEIMAGEABLEAREA_EXTENTHEIGHT = L"ExtentHeight";
wchar_t const* const PAGEIMAGEABLEAREA_EXTENTWIDTH = L"ExtentWidth";
wchar_t const* const PAGEIMAGEABLEAREA_ORIGINHEIGHT = L"OriginHeight";
wchar_t const* const PAGEIMAGEABLEAREA_ORIGINWIDTH = L"OriginWidth";
} // namespace PageImageableArea

namespace PageImageableSize {
wchar_t const* const PROPERTY = L"PageImageableSize";
wchar_t const* PAGE_IMAGEABLE_PROPS[3] = {L"ImageableSizeWidth", L"ImageableSizeHeight", L"ImageableArea"};
wchar_t const* PAGE_IMAGEABLE_PROPS_AREA[4] = {L"OriginWidth", L"OriginHeight", L"ExtentWidth",
                                               L"ExtentHeight"};
wchar_t const* const PAGEIMAGEABLESIZE_AREA = L"ImageableArea";
wchar_t const* const PAGEIMAGEABLESIZE_HEIGHT = L"ImageableSizeHeight";
wchar_t const* const PAGEIMAGEABLESIZE_WIDTH = L"ImageableSizeWidth";
wchar_t const* const PAGE_IMAGEABLE_PROPERTY = L"PageImageableSize";
} // namespace PageImageableSize

namespace PageInputBin {
wchar_t const* const FEATURE = L"PageInputBin";
wchar_t const* const AutoSelect = L"AutoSelect";
wchar_t const* const AutoSheetFeeder = L"AutoSheetFeeder";
wchar_t const* const Cassette = L"Cassette";
wchar_t const* const Manual = L"Manual";
wchar_t const* const Tractor = L"Tractor";
wchar_t const* const automatic = L"automatic";
wchar_t const* const BINTYPE_PROP = L"BinType";
wchar_t const* const BINTYPE_PROP_VAL_CONTINUOUSFEED = L"ContinuousFeed";
wchar_t const* const BINTYPE_PROP_VAL_SHEETFEED = L"SheetFeed";
wchar_t const* const FEEDDIRECTION_PROP = L"FeedDirection";
wchar_t const* const FEEDDIRECTION_PROP_VAL_LONGEDGEFIRST = L"LongEdgeFirst";
wchar_t const* const FEEDDIRECTION_PROP_VAL_SHORTEDGEFIRST = L"ShortEdgeFirst";
wchar_t const* const FEEDTYPE_PROP = L"FeedType";
wchar_t const* const FEEDTYPE_PROP_VAL_AUTOMATIC = L"Automatic";
wchar_t const* const FEEDTYPE_PROP_VAL_MANUAL = L"Manual";
wchar_t const* const MEDIACAPACITY_PROP = L"MediaCapacity";
wchar_t const* const MEDIACAPACITY_PROP_VAL_HIGH = L"High";
wchar_t const* const MEDIACAPACITY_PROP_VAL_STANDARD = L"Standard";
wchar_t const* const MEDIAFACE_PROP = L"FeedFace";
wchar_t const* const MEDIAFACE_PROP_VAL_FACEDOWN = L"FaceDown";
wchar_t const* const MEDIAFACE_PROP_VAL_FACEUP = L"FaceUp";
wchar_t const* const MEDIAPATH_PROP = L"MediaPath";
wchar_t const* const MEDIAPATH_PROP_VAL_SERPENTINE = L"Serpentine";
wchar_t const* const MEDIAPATH_PROP_VAL_STRAIGHT = L"Straight";
wchar_t const* const MEDIASHEETCAPACITY_PROP = L"MediaSheetCapacity";
wchar_t const* const MEDIASIZEAUTOSENSE_PROP = L"MediaSizeAutoSense";
wchar_t const* const MEDIASIZEAUTOSENSE_PROP_VAL_NONE = L"None";
wchar_t const* const MEDIASIZEAUTOSENSE_PROP_VAL_SUPPORTED = L"Supported";
wchar_t const* const MEDIATYPEAUTOSENSE_PROP = L"MediaTypeAutoSense";
wchar_t const* const MEDIATYPEAUTOSENSE_PROP_VAL_NONE = L"None";
wchar_t const* const MEDIATYPEAUTOSENSE_PROP_VAL_SUPPORTED = L"Supported";
} // namespace PageInputBin

namespace PageMediaColor {
wchar_t const* const FEATURE = L"PageMediaColor";
} // namespace PageMediaColor

namespace PageMediaSize {
wchar_t const* const FEATURE = L"PageMediaSize";
wchar_t const* const PAGESIZE_FEATURE = L"PageMediaSize";
wchar_t const* PAGESIZE_PROPS[2] = {L"MediaSizeWidth", L"MediaSizeHeight"};
wchar_t const* const CustomMediaSize = L"CustomMediaSize";
wchar_t const* const PSCustomMediaSize = L"PSCustomMediaSize";
wchar_t const* const MEDIASIZEHEIGHT_PARAM = L"PageMediaSizeMediaSizeHeight";
wchar_t const* const MEDIASIZEHEIGHT_PROP = L"MediaSizeHeight";
wchar_t const* const MEDIASIZEWIDTH_PARAM = L"PageMediaSizeMediaSizeWidth";
wchar_t const* const MEDIASIZEWIDTH_PROP = L"MediaSizeWidth";
wchar_t const* const MEDIASIZE_DRIVER_CUSTOM_KEYWORD_PREFIX = L"DriverCustomSize_";
wchar_t const* const MEDIASIZE_PSHEIGHTOFFSET_PARAM = L"PageMediaSizePSHeightOffset";
wchar_t const* const MEDIASIZE_PSHEIGHTOFFSET_PROP = L"PSHeightOffset";
wchar_t const* const MEDIASIZE_PSHEIGHT_PARAM = L"PageMediaSizePSHeight";
wchar_t const* const MEDIASIZE_PSHEIGHT_PROP = L"PSHeight";
wchar_t const* const MEDIASIZE_PSORIENTATION_PARAM = L"PageMediaSizePSOrientation";
wchar_t const* const MEDIASIZE_PSORIENTATION_PROP = L"PSOrientation";
wchar_t const* const MEDIASIZE_PSWIDTHOFFSET_PARAM = L"PageMediaSizePSWidthOffset";
wchar_t const* const MEDIASIZE_PSWIDTHOFFSET_PROP = L"PSWidthOffset";
wchar_t const* const MEDIASIZE_PSWIDTH_PARAM = L"PageMediaSizePSWidth";
wchar_t const* const MEDIASIZE_PSWIDTH_PROP = L"PSWidth";
wchar_t const* const MEDIASIZE_USER_FORM_KEYWORD_PREFIX = L"UserForm_";
} // namespace PageMediaSize

namespace PageMediaType {
wchar_t const* const FEATURE = L"PageMediaType";
wchar_t const* const Archival = L"Archive";
wchar_t const* const AutoSelect = L"AutoSelect";
wchar_t const* const Bond = L"Bond";
wchar_t const* const CardStock = L"CardStock";
wchar_t const* const Continuous = L"Continuous";
wchar_t const* const EnvelopePlain = L"EnvelopePlain";
wchar_t const* const EnvelopeWindow = L"EnvelopeWindow";
wchar_t const* const HighResolution = L"HighResolution";
wchar_t const* const Label = L"Label";
wchar_t const* const None = L"None";
wchar_t const* const Photographic = L"Photographic";
wchar_t const* const PhotographicGlossy = L"PhotographicGlossy";
wchar_t const* const PhotographicHighGloss = L"PhotographicHighGloss";
wchar_t const* const PhotographicMatte = L"PhotographicMatte";
wchar_t const* const PhotographicSemiGloss = L"PhotographicSemiGloss";
wchar_t const* const Plain = L"Plain";
wchar_t const* const Stationery = L"Stationery";
wchar_t const* const TShirtTransfer = L"TShirtTransfer";
wchar_t const* const TabStockFull = L"TabStockFull";
wchar_t const* const TabStockPreCut = L"TabStockPreCut";
wchar_t const* const Transparency = L"Transparency";
wchar_t const* const BACKCOATING_PROP = L"BackCoating";
wchar_t const* const COATING_PROP_VAL_GLOSSY = L"Glossy";
wchar_t const* const COATING_PROP_VAL_HIGHGLOSS = L"HighGloss";
wchar_t const* const COATING_PROP_VAL_MATTE = L"Matte";
wchar_t const* const COATING_PROP_VAL_NONE = L"None";
wchar_t const* const COATING_PROP_VAL_SATIN = L"Satin";
wchar_t const* const COATING_PROP_VAL_SEMIGLOSS = L"SemiGloss";
wchar_t const* const FRONTCOATING_PROP = L"FrontCoating";
wchar_t const* const MATERIAL_PROP = L"Material";
wchar_t const* const MATERIAL_PROP_VAL_DISPLAY = L"Display";
wchar_t const* const MATERIAL_PROP_VAL_PAPER = L"Paper";
wchar_t const* const MATERIAL_PROP_VAL_TRANSPARENCY = L"Transparency";
wchar_t const* const MEDIATYPE_CUSTOM_TYPE_KEYWORD_PREFIX = L"CustomType_";
wchar_t const* const PREPRINTED_PROP = L"PrePrinted";
wchar_t const* const PREPRINTED_PROP_VAL_LETTERHEAD = L"Letterhead";
wchar_t const* const PREPRINTED_PROP_VAL_NONE = L"None";
wchar_t const* const PREPRINTED_PROP_VAL_PREPRINTED = L"PrePrinted";
wchar_t const* const PREPUNCHED_PROP = L"PrePunched";
wchar_t const* const PREPUNCHED_PROP_VAL_NONE = L"None";
wchar_t const* const PREPUNCHED_PROP_VAL_PREPUNCHED = L"PrePunched";
wchar_t const* const RECYCLED_PROP = L"Recycled";
wchar_t const* const RECYCLED_PROP_VAL_NONE = L"None";
wchar_t const* const RECYCLED_PROP_VAL_STANDARD = L"Standard";
wchar_t const* const WEIGHT_PROP = L"Weight";
} // namespace PageMediaType

namespace PageOrientation {
wchar_t const* const FEATURE = L"PageOrientation";
wchar_t const* OPTIONS[4] = {L"Landscape", L"Portrait", L"ReverseLandscape", L"ReversePortrait"};
} // namespace PageOrientation

namespace PageOutputColor {
wchar_t const* const FEATURE = L"PageOutputColor";
wchar_t const* const Color = L"Color";
wchar_t const* const Grayscale = L"Grayscale";
wchar_t const* const Monochrome = L"Monochrome";
} // namespace PageOutputColor

namespace PageOutputQuality {
wchar_t const* const FEATURE = L"PageOutputQuality";
wchar_t const* const Automatic = L"Automatic";
wchar_t const* const Draft = L"Draft";
wchar_t const* const Fax = L"Fax";
wchar_t const* const High = L"High";
wchar_t const* const Normal = L"Normal";
wchar_t const* const Photographic = L"Photographic";
wchar_t const* const Text = L"Automatic";
} // namespace PageOutputQuality

namespace PageResolution {
wchar_t const* const FEATURE = L"PageResolution";
wchar_t const* const RESOLUTIONX_PROP = L"ResolutionX";
wchar_t const* const RESOLUTIONY_PROP = L"ResolutionY";
} // namespace PageResolution

namespace PageScaling {
wchar_t const* const SCALE_FEATURE = L"PageScaling";
wchar_t const* SCALE_OPTIONS[7] = {L"Custom",
                                   L"CustomSquare",
                                   L"FitApplicationBleedSizeToPageImageableSize",
                                   L"FitApplicationContentSizeToPageImageableSize",
                                   L"FitApplicationMediaSizeToPageImageableSize",
                                   L"FitApplicationMediaSizeToPageMediaSize",
                                   L"None"};
wchar_t const* CUST_SCALE_PROPS[4] = {L"OffsetWidth", L"OffsetHeight", L"ScaleWidth", L"ScaleHeight"};
wchar_t const* CUST_SQR_SCALE_PROPS[3] = {L"OffsetWidth", L"OffsetHeight", L"Scale"};
} // namespace PageScaling

namespace PageScaling::OffsetAlignment {
wchar_t const* const SCALE_OFFSET_FEATURE = L"ScaleOffsetAlignment";
wchar_t const* SCALE_OFFSET_OPTIONS[9] = {L"BottomCenter", L"BottomLeft", L"BottomRight",
                                          L"Center",       L"LeftCenter", L"RightCenter",
                                          L"TopCenter",    L"TopLeft",    L"TopRight"};
} // namespace PageScaling::OffsetAlignment

namespace constrained {
wchar_t const* const AdminSettings = L"AdminSettings";
wchar_t const* const DeviceSettings = L"DeviceSettings";
wchar_t const* const None = L"None";
wchar_t const* const PrintTicketSettings = L"PrintTicketSettings";
} // namespace constrained

} // namespace PrintSchema
