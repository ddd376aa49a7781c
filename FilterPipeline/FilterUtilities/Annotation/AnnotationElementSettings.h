#pragma once

#include "DataModel/ValueIds.h"

#include <LowLevelFacilities/Numbers/Dimension.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

/// One annotation: a text, a time stamp, a picture, a Bates number or a page number, and where it goes on a
/// page. In all enumerations VAL_UNSPECIFIED stands for nothing chosen.
struct AnnotationElementSettings {
    using tagValueEnum = DataModelIds::tagValueEnum;

    tagValueEnum type = DataModelIds::VAL_UNSPECIFIED;
    bool isFirstPageOnly = false;
    bool isJobId = false; // the mark of the job in the margin
    tagValueEnum drawMode = DataModelIds::VAL_ANNOTATION_IN_FOREGROUND;
    float opacity = 0.5F; // 1 minus the transparency
    int angle = 315;      // degrees
    float offsetFromCenterX = 0;
    float offsetFromCenterY = 0;
    int justificationFlags = 0; // the drawing filter's
    int justificationX = 0;     // XPS units
    int justificationY = 0;
    tagValueEnum renderOrder = DataModelIds::VAL_ANNOTATION_PRE_IMPOSITION;
    CXString text;
    CXString faceName;
    int charset = 1; // DEFAULT_CHARSET
    int sizeInPoints = 72;
    CXString reservedText; // read by nobody
    CXString resourceName; // a GUID of its own
    tagValueEnum timeStampFormat = {};
    tagValueEnum timeStampDateOrder = {};
    tagValueEnum timeStampTimePart = {};
    tagValueEnum timeStampHourForm = {};
    CXString reservedTimeStampText; // read by nobody
    CXString color;                 // hexadecimal, as "#808080"
    CXString imageFileName;
    float scaling = 100; // per cent
    Dimension imageWidth;
    Dimension imageHeight;
    bool isImageParsed = false;
    float horizontalResolution = 0; // dots to the inch
    float verticalResolution = 0;
};
