#include "DeviceControl/LowEndInstructions.h"

#include "DeviceControl/CommandRow.h"
#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobQuestions.h"

#include <SystemServices/OperatingSystem.h>

using namespace DataModelIds;
using InstructionText::Append;
using InstructionText::Decimal;

namespace {

constexpr ValueText pagesPerSheet[] = {
    {VAL_PAGE_LAYOUT_NUP_2, L"2"}, {VAL_PAGE_LAYOUT_NUP_4, L"4"},   {VAL_PAGE_LAYOUT_NUP_6, L"6"},
    {VAL_PAGE_LAYOUT_NUP_9, L"9"}, {VAL_PAGE_LAYOUT_NUP_16, L"16"},
};

constexpr ValueText mediaTypes[] = {
    {VAL_UNSPECIFIED, L"auto"},
    {VAL_MEDIA_TYPE_SYSTEM_DEFAULT, L"auto"},
    {VAL_MEDIA_TYPE_USE_READY, L"auto"},
    {VAL_MEDIA_TYPE_PLAIN, L"plain"},
    {VAL_MEDIA_TYPE_LABEL, L"labels"},
    {VAL_MEDIA_TYPE_ENVELOPE_PLAIN, L"envelope-plain"},
    {VAL_MEDIA_TYPE_STATIONERY_HEAVYWEIGHT, L"heavy"},
    {VAL_MEDIA_TYPE_BOND, L"bond"},
    {VAL_MEDIA_TYPE_STATIONERY_LETTERHEAD, L"stationery-letterhead"},
    {VAL_MEDIA_TYPE_CARD_STOCK, L"cardstock"},
    {VAL_MEDIA_TYPE_STATIONERY_COLORED, L"color-paper"},
    {VAL_MEDIA_TYPE_STATIONERY_LIGHTWEIGHT, L"light"},
    {VAL_MEDIA_TYPE_STATIONERY_PRE_PRINTED, L"stationery-preprinted"},
    {VAL_MEDIA_TYPE_STATIONERY_RECYCLED, L"recycled"},
    {VAL_MEDIA_TYPE_LABELS_PLASTIC, L"vinyl"},
    {VAL_MEDIA_TYPE_ROUGH, L"rough"},
    {VAL_MEDIA_TYPE_STATIONERY_GLOSSY, L"photographic-glossy"},
    {VAL_MEDIA_TYPE_CUSTOM1, L"custom-lxk1"},
    {VAL_MEDIA_TYPE_CUSTOM2, L"custom-lxk2"},
    {VAL_MEDIA_TYPE_CUSTOM3, L"custom-lxk3"},
    {VAL_MEDIA_TYPE_CUSTOM4, L"custom-lxk4"},
    {VAL_MEDIA_TYPE_CUSTOM5, L"custom-lxk5"},
    {VAL_MEDIA_TYPE_CUSTOM6, L"custom-lxk6"},
    {VAL_MEDIA_TYPE_CUSTOM7, L"custom-lxk7"},
};

constexpr ValueText mediaSources[] = {
    {VAL_INPUT_TRAY_1, L"tray-1"},         {VAL_INPUT_TRAY_2, L"tray-2"},      {VAL_INPUT_TRAY_3, L"tray-3"},
    {VAL_INPUT_TRAY_AUTO_SELECT, L"auto"}, {VAL_INPUT_TRAY_MANUAL, L"manual"},
};

constexpr ValueText sides[] = {
    {VAL_SIDES_ONE_SIDED, L"one-sided"},
    {VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE, L"two-sided-long-edge"},
    {VAL_SIDES_TWO_SIDED_FLIP_SHORT_EDGE, L"two-sided-short-edge"},
};

void AppendHead(CXString& pjl, const JobQuestions& job) {
    Append(pjl, L"\x1B%-12345X@PJL JOB\n");
    Append(pjl, L"@PJL SET STRINGCODESET=UTF8\n");
    Append(pjl, L"@PJL SET USERNAME=\"", job.UserName(), L"\"\n");
    Append(pjl, L"@PJL SET JOBNAME=\"", job.JobName(), L"\"\n");
    Append(pjl, L"@PJL SET LHOSTID=\"", OperatingSystem::GetFullComputerName(), L"\"\n");
}

void AppendCopies(CXString& pjl, const JobQuestions& job) {
    Append(pjl, L"@PJL SET COPIES=", Decimal(job.Integer(FEAT_COPIES).value_or(1)), L'\n');
    const tagValueEnum collation = job.Choice(FEAT_COLLATION);
    const bool isCollated = collation == VAL_COLLATION_COLLATED || collation == VAL_UNSPECIFIED;
    Append(pjl, isCollated ? L"@PJL SET LCOLLATION=ON\n" : L"@PJL SET LCOLLATION=OFF\n");
}

void AppendColor(CXString& pjl, const JobQuestions& job) {
    if (job.Choice(FEAT_COLOR_EFFECTS) == VAL_COLOR_EFFECTS_GRAYSCALE)
        Append(pjl, L"@PJL SET LCOLORMODEL=BLACK\n", L"@PJL SET RENDERMODE=GRAYSCALE\n");
    else
        Append(pjl, L"@PJL SET LCOLORMODEL=CMYK\n", L"@PJL SET RENDERMODE=COLOR\n");
}

void AppendPageTicket(CXString& ticket, const JobQuestions& job) {
    Append(ticket, L"%LexHBP-1.0\n", L"%  LexHBP-Page-Ticket\n", L"%      page-ticket-version: 1.0\n",
           L"%    MediaHandlingSection\n");
    Append(ticket, L"%      media-type: ",
           TextOf(mediaTypes, job.Choice({FEAT_MEDIA_COL, FEAT_EFFECTIVE_MEDIA_TYPE})), L'\n');
    Append(ticket, L"%      media-source: ",
           TextOf(mediaSources, job.Choice({FEAT_MEDIA_COL, FEAT_INPUT_TRAY})), L'\n');
    Append(ticket, L"%      sides: ", TextOf(sides, job.Choice(FEAT_SIDES_IMAGED)), L'\n');
    Append(ticket, L"%      output-bin: auto\n", L"%  LexHBP-Page-Ticket-End\n");
}

} // namespace

void LowEndInstructions::GeneratePostScript(CXString& pjl, const JobQuestions& job) {
    AppendHead(pjl, job);
    Append(pjl, L"@PJL COMMENT \"NUP = ", TextOf(pagesPerSheet, job.Choice(FEAT_PAGE_LAYOUT), L"1"),
           L"\"\r\n");
    Append(pjl, L"@PJL SET LMULTIPAGEPRINT=OFF\r\n"); // the pages are laid out already
    AppendColor(pjl, job);
}

void LowEndInstructions::GeneratePcl6(CXString& pjl, const JobQuestions& job) {
    AppendHead(pjl, job);
    AppendCopies(pjl, job);
    AppendColor(pjl, job);
}

void LowEndInstructions::GeneratePclm(CXString& pjl, CXString& pageTicket, const JobQuestions& job) {
    AppendHead(pjl, job);
    AppendCopies(pjl, job);
    AppendPageTicket(pageTicket, job);
    AppendColor(pjl, job);
}
