#pragma once

#include "PageRenderer.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <vector>

class JobSettings;

/// Width and height of a sheet as its image needs it, in microns.
struct SheetSize {
    int width = 0;
    int height = 0;

    bool operator==(const SheetSize&) const = default;
};

/// What a page asks of the sheet that it is printed on, in the words of the page-level commands
/// (PostScriptPageLevelPDLHelper). Empty where nobody says it.
struct PageMedia {
    SheetSize size;
    bool isSizeAsked = false; // by a ticket of the job, and not by the printer alone
    CXString type;
    CXString color;
    CXString sides;
    CXString tray;

    /// Of a level that is merged. The tickets of documents and pages do not hold what concerns the job as a
    /// whole: its sides, and a tray that is named for all of it.
    static PageMedia Of(JobSettings& settings, JobSettings& job);

    /// What the device has to be told where a sheet with the one follows a sheet with the other: texts
    /// "name=value". What the later does not say goes back to the device's own.
    static std::vector<CXString> Changes(const PageMedia& from, const PageMedia& to);
};

/// Whether a sheet of that size takes the page, either way round; a point of rounding counts as nothing.
bool Fits(const SheetSize& sheet, const PageSize& page);

/// The sheet, turned as the page is.
SheetSize Turned(const SheetSize& sheet, const PageSize& page);

/// A sheet of the page's own size.
SheetSize SheetOf(const PageSize& page);
