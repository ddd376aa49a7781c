#pragma once

#include "Annotation/AnnotationElementSettings.h"
#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/ValueIds.h"
#include "FontsAndImages/GdiDeviceContext.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <windows.h>
#include <gdiplus.h>
#include <objidl.h>

#include <memory>
#include <vector>

class AnnotationStore;
class AttributeBytesIndexedList;
class ClientJobData2ReaderWriter;
class LineBreaker;
class PrintTicketOrvelPublicDocSettingsReaderWriter;

/// The annotations of a job: what the driver prints onto its pages. They come from the public document
/// settings of a ticket, or from its attribute bytes, and the driver adds the mark of the job and the lines
/// of a fax cover sheet. This class tells what is to be drawn where; the filter draws it.
///
/// A filter, once a job and page size:
///
///     AnnotationPrintTicketSettings annotations;
///     annotations.SetFaxAnnotationSettings(isCoverSheet);
///     annotations.Initialize(pageSize, publicSettings, attributes, seed, flag, jobIdOption);
///     if (!annotations.DoesJobUseAnnotations()) return;
///     annotations.ReadClientGeneratedTimestampTextFromClientJobData2(clientData); // if there is any
///     annotations.InitializeAllTimeStampAnnotationElementsBasedOnJobStartTime(
///         printer, job, false, user, name);
///     for (int i = 0; annotations.SelectAnnotationElement(i); ++i)
///         ... GetType(), GetText(), GetImageFileName() and the rest tell of element i ...
///
/// JobAnnotations does all of this, from a snapshot of the job's tickets.
///
/// A font is embedded once for all elements that use it:
/// GetCumulativeListOfUniqueCharactersRequiredFromThisFont gives the characters, GetGdiDeviceContextRef the
/// font, GenerateFontResourceUriWitExtension the part. Who knows only the name of a definition writes the
/// definition into the ticket (ExpandNameOnlyAnnotationDefinitionInPrintTicket), or sends it along with the
/// job (SetAnnotationDefinitionInClientJobData2).
///
/// Texts, face names, colours and numbers are what the client wrote, unchecked: who puts them into markup
/// escapes them, and an opacity may be outside 0 to 1. Text-giving operations throw std::bad_alloc only;
/// public ones with an HRESULT throw nothing. An object belongs to one thread; the separators of dates and
/// times are those of the process, and are guarded.
class OV_FILTER_UTILITIES_API AnnotationPrintTicketSettings {
public:
    using tagValueEnum = DataModelIds::tagValueEnum;

    /// The values of one element as the ticket has them. Angles are degrees, transparency and scale per cent.
    struct RawAnnotationElementPrintTicketAttributes {
        tagValueEnum type = DataModelIds::VAL_UNSPECIFIED;
        tagValueEnum firstPage = DataModelIds::VAL_UNSPECIFIED;
        tagValueEnum drawMode = DataModelIds::VAL_UNSPECIFIED;
        int transparency = 50;
        CXString text; // of a picture, its file
        int angle = 315;
        int xOffset = 0; // from the centre, thousandths
        int yOffset = 0;
        int justificationFlags = 0;
        int xOffsetInches = 0; // from an edge, ten-thousandths, of which whole hundredths count
        int yOffsetInches = 0;
        tagValueEnum renderOrder = DataModelIds::VAL_ANNOTATION_PRE_IMPOSITION;
        CXString fontName = L"Segoe UI";
        int characterSet = 1; // DEFAULT_CHARSET
        int fontSize = 72;    // points
        CXString color = L"#808080";
        tagValueEnum format = {};
        tagValueEnum dateOrder = {};
        tagValueEnum timePart = {};
        tagValueEnum hourForm = {};
        int pictureScale = 100;
    };

    AnnotationPrintTicketSettings();
    AnnotationPrintTicketSettings(const AnnotationPrintTicketSettings&) = delete;
    AnnotationPrintTicketSettings& operator=(const AnnotationPrintTicketSettings&) = delete;
    virtual ~AnnotationPrintTicketSettings();

    // ---- The list

    /// Reads the elements, in place of earlier ones. The page size is in XPS units; the list stays the
    /// caller's and must outlive this object; the seed goes into the names of resources; the flag is the
    /// filter's own. With VAL_PRINT_ID_ON_FIRST_PAGE or _ON_ALL_PAGES a job gets its mark in the margin,
    /// unless it is a fax. S_FALSE if nothing is annotated: the list then has one element without a type. A
    /// value that cannot be read keeps its default.
    HRESULT Initialize(Gdiplus::SizeF pageSize, PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings,
                       AttributeBytesIndexedList& attributes, LONG resourceSeed, bool flag,
                       tagValueEnum jobIdOption);
    /// Whether the elements are those of a fax cover sheet. Before Initialize.
    void SetFaxAnnotationSettings(bool isFaxCoversheet);
    bool IsFaxCoversheetAnnotations();

    /// Appends an element with the defaults, selects it, and gives the number of elements.
    int AddNewAnnotationElement();
    /// False, with the selection as it was, for an index outside the list.
    bool SelectAnnotationElement(int index);
    /// Null before there is any element. Owned by the list.
    AnnotationElementSettings* GetSelected() const;
    void SaveAnnotationElementSelection();
    /// Selects what was saved last; nothing happens if nothing was.
    void RestoreAnnotationElementSelection();
    /// 0 also if the first element has no type: it alone is looked at.
    int GetNumberOfAnnotationElements();
    bool DoesJobUseAnnotations();
    /// The mark of the job counts as a text and as a time stamp.
    int GetCountOfTextBasedElements();
    int GetCountOfTimestampElements();
    int GetCountOfBitmapElements();

    // ---- What the words of the settings mean

    /// VAL_UNSPECIFIED for other texts.
    static tagValueEnum GetAnnotationElementTypeFromString(const CXString& text);
    static tagValueEnum GetFirstpageApiFromString(const CXString& text);
    static tagValueEnum GetDrawmodeApiFromString(const CXString& text);
    /// Before imposition for other texts.
    static tagValueEnum GetRenderOrderApiFromString(const CXString& text);

    // ---- The selected element; without one, the defaults

    tagValueEnum GetType() const;
    bool IsAnAnnotationSpecified() const;
    /// Also true of Bates and page numbers, which the filter makes texts of.
    bool IsTextBasedAnnotationType() const;
    bool IsTimestampAnnotationType() const;
    bool IsJobIDAnnotationType() const;
    bool IsBitmapAnnotationType() const;
    bool GetFirstPageOnly() const;
    tagValueEnum GetDrawMode() const;
    float GetOpacity() const;
    /// In decimals with a point, as few as tell it from all others.
    CXString GetOpacityAsString() const;
    int GetAngle() const;
    Gdiplus::PointF GetOffsetFromCenter() const;
    int GetJustificationFlags() const;
    int GetJustificationXOffsetInXpsUnits() const;
    int GetJustificationYOffsetInXpsUnits() const;
    tagValueEnum GetRenderOrder() const;
    CXString GetFaceName() const;
    int GetCharset() const;
    CXString GetText() const;
    int GetFontSizeInPoints() const;
    /// In whole XPS units, cut.
    CXString GetFontRenderingEmSizeAsString() const;
    CXString GetFontHexColorString() const;
    /// The part for a font of this element's own.
    CXString GetFontURI() const;
    CXString GetImageFileName() const;
    void SetImageFileName(const CXString& fileName);
    float GetScaling() const;
    GdiDeviceContext& GetGdiDeviceContextRef();

    // ---- Definitions that the client keeps under a name

    /// Empty if the job has none.
    CXString
    GetAnnotationDefinitionNameFromPrintTicket(PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings,
                                               AttributeBytesIndexedList& attributes);
    /// Puts the definition of that name in the place of the name, with this machine's separators of dates and
    /// times, and commits the settings. S_OK, with nothing changed, if the store has no such definition;
    /// E_FAIL for a blank name or no store. What fails changes neither the settings nor the ticket.
    HRESULT ExpandNameOnlyAnnotationDefinitionInPrintTicket(
        const CXString& name, AnnotationStore* store,
        PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings);
    /// The same with the store that came with the job; E_FAIL if none did.
    HRESULT ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2(
        const CXString& name, ClientJobData2ReaderWriter* clientData,
        PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings);
    /// Sends the one definition that the job needs along with it. E_FAIL for a blank name, a null pointer or
    /// a definition that the store does not have.
    HRESULT SetAnnotationDefinitionInClientJobData2(const CXString& name, AnnotationStore* store,
                                                    ClientJobData2ReaderWriter* clientData);
    bool WasNameOnlyDefinitionExpandedInPrintTicket();

    // ---- Names of parts

    // Deliberate: the published names of two operations are misspelled.
    LONG GetAnnotationResourceUiqueNameSeed();
    CXString GetAnnotationResourceUriRootPath();
    CXString GenerateFontResourceUriWitExtension(CXString faceName);
    CXString GenerateImageResourceUriWithoutExtension(CXString fileName);

    // ---- Dates and times

    /// What the user's locale puts between two fields of a date: "//" if its picture does not tell.
    static CXString GetDateSeparatorByReverseEngineering();
    /// Of a time: ":" if the picture does not tell.
    static CXString GetTimeSeparatorByReverseEngineering();
    /// Gives time stamps and the mark of the job their texts, from the time at which the job was submitted,
    /// in local time; those that have one keep it, unless a time stamp is to be regenerated. With both words
    /// the mark says them around the time, and it gets a face that can show what it says. The result is that
    /// of the last element worked on: E_FAIL, with the text as it was, if the spooler does not know the job.
    HRESULT InitializeAllTimeStampAnnotationElementsBasedOnJobStartTime(void* printerHandle, ULONG jobId,
                                                                        bool regenerate, CXString& firstWord,
                                                                        CXString& secondWord);
    /// Sends the texts of time stamps and the job's mark along with the job, as they read in the client's
    /// zone and locale. E_FAIL for null.
    HRESULT SetClientGeneratedTimestampTextInClientJobData2(ClientJobData2ReaderWriter* clientData);
    /// Takes the texts that came with the job; what names no such element, or is damaged, is passed over.
    /// S_FALSE if none came, E_FAIL for null.
    HRESULT ReadClientGeneratedTimestampTextFromClientJobData2(ClientJobData2ReaderWriter* clientData);

    // ---- Lines of a cover sheet

    /// Breaks a text at its blanks, by line feeds, so that each line leaves an inch free on both sides of the
    /// page; a word that is too long is cut between two characters. What fits comes back as it is.
    CXString WrapLineIfNecessary(CXString text);
    /// One step of it: appends the line that begins at `lineStart` to `lines`, behind a line feed unless it
    /// is the first, and gives it. `lineStart` moves to the next line; the others tell the length of this
    /// one, where its last word begins and how long that is, and how much of the text remains. Empty at the
    /// end of the text.
    CXString FormatLine(CXString& lines, CXString text, int& lineStart, int& lineLength, int& wordStart,
                        int& wordLength, int& remaining);

    // ---- Fonts and pictures of the elements

    /// Each character once, in the order of their appearance, of all texts in that face.
    CXString GetCumulativeListOfUniqueCharactersRequiredFromThisFont(const CXString& faceName);
    /// Reads size and resolution of the selected element's picture; one without a resolution has 300 dots to
    /// the inch. E_INVALIDARG without a file name, or what the platform says of the picture.
    HRESULT ParseImageFile();
    HRESULT ParseImageFile(IStream* picture);
    // These read the file if that was not done yet; 0 if they cannot.
    float GetImageWidthInXpsUnits();
    float GetImageHeightInXpsUnits();
    float GetHResolution();
    float GetVResolution();

protected:
    /// Takes the separators of the process from the settings, else from the attributes, else from the locale,
    /// the first time that anyone in the process calls.
    void InitializeLocalizedDateAndTimeSeparatorsOnFirstUse(
        PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings, AttributeBytesIndexedList& attributes);
    /// S_FALSE if the time is known, E_FAIL if the spooler does not know the job.
    HRESULT InitializeJobSubmitTimeInLocalTimeIfNotAlreadyInitialized(void* printerHandle, ULONG jobId);
    void SetJobSubmitTimeInLocalTime(SYSTEMTIME time);
    // Deliberate: published names. Of the selected element; a part that the platform cannot format is empty.
    CXString GenerateTimstampAnnotationText();
    /// E_INVALIDARG for an element that is no time stamp.
    HRESULT ApplyTimstampAnnotationText();
    void AddAndInitializeFaxCoverSheetInfoAnnotationElement();
    /// Line 0 is an inch below the edge. Nothing for an empty text.
    void InitFaxTextAnnotationElement(CXString text, int line);

private:
    friend class AnnotationElementReader;
    class SelectionKeeper;

    static bool TryToGetTimeStampFormatApiFromString(const CXString& text, tagValueEnum& value);
    static bool TryToGetTimeStampFormatDateApiFromString(const CXString& text, tagValueEnum& value);
    static bool TryToGetTimeStampFormatTimeApiFromString(const CXString& text, tagValueEnum& value);
    static bool TryToGetTimeStampFormatHourApiFromString(const CXString& text, tagValueEnum& value);

    void ForgetElements();
    HRESULT ReadElements_throws(PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings,
                                AttributeBytesIndexedList& attributes);
    LONG ReadPublicSettings_throws(PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings,
                                   AttributeBytesIndexedList& attributes);
    void ReadAttributes_throws(PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings,
                               AttributeBytesIndexedList& attributes);
    void AddAndInitializeNewAnnotationElement(const RawAnnotationElementPrintTicketAttributes& raw);
    void AddAndInitializeJobIdInMarginAnnotation(AttributeBytesIndexedList& attributes, bool firstPageOnly);
    void InitializeText(const RawAnnotationElementPrintTicketAttributes& raw);

    const AnnotationElementSettings& Selected() const;
    HRESULT ParseImageFile_impl(Gdiplus::Bitmap& bitmap);
    bool ParseImageIfNecessary();

    HRESULT InitializeJobIdText_throws(void* printerHandle, ULONG jobId, const CXString& firstWord,
                                       const CXString& secondWord);

    void ReadClientText_throws(const CXString& entry);

    CXString BuildFaxInfoString();
    CXString GetFaxSenderInfo();
    CXString GetFaxRecipients();
    CXString GetFaxNotes();
    CXString GetLocalizedString(int index);
    AttributeBytesIndexedList GetFaxCover();
    LineBreaker MakeLineBreaker();

    bool m_isFax = false;
    AttributeBytesIndexedList* m_attributes = nullptr;
    bool m_jobHasFaxData = false;
    int m_textBasedCount = 0;
    int m_timeStampCount = 0;
    int m_bitmapCount = 0;
    SYSTEMTIME m_jobSubmitTime = {}; // the year is 0 until it is read
    std::vector<std::unique_ptr<AnnotationElementSettings>> m_elements;
    AnnotationElementSettings* m_selected = nullptr;
    AnnotationElementSettings* m_savedSelection = nullptr;
    bool m_initializeFlag = false;
    LONG m_resourceSeed = 0;
    float m_pageWidth = 0;
    float m_pageHeight = 0;
    GdiDeviceContext m_deviceContext;
    bool m_wasNameOnlyDefinitionExpanded = false;
};
