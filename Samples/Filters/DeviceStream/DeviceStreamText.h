#pragma once

#include "PageMedia.h"
#include "PageRenderer.h"
#include "StreamText.h"

#include <DeviceControl/DeviceFamily.h>
#include <DeviceControl/PostScriptPageLevelPDLHelper.h>

/// The PostScript stream of a job, as its device wants it: escape sequence, PJL, prologue, set-up, the pages
/// with what the sheets between them change, comments, end. The order of the calls is Begin, pages, End.
class DeviceStreamText {
public:
    /// productData may be empty. The texts must outlive this object.
    DeviceStreamText(StreamText& out, const DeviceInstructions& instructions, const CPString& productData);

    /// title: of the job, safe to stand in a comment.
    void Begin(const CXString& title);
    /// On a sheet of that media. The page stands at the upper left corner of the sheet.
    void AddPage(const PageImage& page, const PageMedia& media);
    void End();

private:
    void AddMediaChanges(const PageMedia& media);

    StreamText& m_out;
    const DeviceInstructions& m_instructions;
    bool m_hasProductData;
    PostScriptPageLevelPDLHelper m_pageLevel;
    PageMedia m_media; // of the page before
    unsigned long m_pages = 0;
};
