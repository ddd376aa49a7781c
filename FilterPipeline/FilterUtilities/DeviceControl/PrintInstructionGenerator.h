#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/SimpleOptionValue.h"

#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <vector>

class IFilterFeatureAccess;
class OrvelDriverPropertyBag;

/// Turns what a job asks for into the instructions that a render filter writes around its pages: what stands
/// before the page data (PJL), PostScript for the start of the job, and comments behind it. One operation for
/// each device family, of which a filter calls the one that it serves.
///
/// Each empties the texts that it is given, and fills those that its family has. What the job does not say
/// adds nothing. The same job gives the same texts, but for the passcode of a held job. Failures of the
/// strings and of the feature access pass through. One thread at a time.
class OV_FILTER_UTILITIES_API PrintInstructionGenerator {
public:
    enum PrintInstructionCommentType {
        CommentTypePjl = 1,
        CommentTypePostScript = 2,
    };

    /// Both must outlive the generator.
    PrintInstructionGenerator(IFilterFeatureAccess& features, OrvelDriverPropertyBag& device);
    ~PrintInstructionGenerator();

    void GenerateLegacyKestrelPostScript(CXString& pjlCommands, CXString& setupCommands,
                                         CXString& trailerComments);
    /// filterDoesColorCorrection: the pages come with their colours corrected.
    void GenerateLegacyHarrierPostScript(CXString& pjlCommands, CXString& setupCommands,
                                         CXString& trailerComments, bool filterDoesColorCorrection);
    void GenerateLegacyOspreyPostScript(CXString& pjlCommands, CXString& setupCommands,
                                        CXString& trailerComments);
    /// The flag has no effect.
    void GenerateLegacyMerlinPostScript(CXString& pjlCommands, CXString& setupCommands,
                                        CXString& trailerComments, bool flag);
    void GenerateLegacyMerlinPCL6(CXString& pjlCommands, CXString& setupCommands, CXString& trailerComments);
    void GenerateSpecialLowEndPS(CXString& pjlCommands, CXString& setupCommands, CXString& trailerComments);
    void GenerateSpecialLowEndPCL6(CXString& pjlCommands, CXString& setupCommands, CXString& trailerComments);
    void GenerateSpecialLowEndPCLm(CXString& pjlCommands, CXString& pageTicket);

    /// The device's list of finishings for the job; empty where the job leaves them to the device.
    static std::vector<DataModelIds::tagValueEnum>
    CalculateCppsFinishingsValuesFromIFilterFeatureAccess(IFilterFeatureAccess& features);

    /// Guesses the application from the name that a document has in the queue. False, with
    /// "unknown-application", where the name does not give it away.
    static bool GuessCreatorNamePdlFromDocumentName(const CXString& documentName, CXString& creator);

private:
    CXString GeneratePDLSnippet(CXString command, CXString option, CXString feature);
    /// Empty for a type that is neither.
    CXString GenerateSPARInformationComments(PrintInstructionCommentType type);
    /// The product's own command for an option. Empty where it has none.
    CXString GetProductSpecificPDLForFeature(CXString section, CXString option,
                                             DataModelIds::tagValueEnum pdl);
    CXString GetProductSpecificPDLForFeature(CXString section, CXString option, CXString group,
                                             DataModelIds::tagValueEnum pdl);
    CXString GetProductSpecificPDLForFeature(CXString section, CXString option, CXString group,
                                             CXString subgroup, DataModelIds::tagValueEnum pdl);
    CXString GenerateLegacyKestrelCustomColorPostScript();
    CXString GenerateLegacyKestrelRgbPostScript(SimpleOptionValue value);
    CXString GenerateLegacyKestrelCmykPostScript(SimpleOptionValue value);
    CXString GenerateLegacyHarrierCustomColorPostScript();

    /// The product's data, read at the first call that finds some; empty where it cannot be read.
    const CPString& ProductPdl() noexcept;

    IFilterFeatureAccess& m_features;
    OrvelDriverPropertyBag& m_device;
    CPString m_productPdl;
};
