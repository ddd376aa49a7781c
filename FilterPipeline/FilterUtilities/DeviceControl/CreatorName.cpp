#include "DeviceControl/CreatorName.h"

#include "DeviceControl/PrintInstructionGenerator.h"
#include "FeatureAccess/IFilterFeatureAccess.h"

using DataModelIds::FEAT_CREATOR_NAME_PDL;

void CreatorName::FillIn(IFilterFeatureAccess& features) {
    CXString creator;
    if (features.GetStringValue(FEAT_CREATOR_NAME_PDL, creator) && !creator.IsEmpty()) return;
    if (PrintInstructionGenerator::GuessCreatorNamePdlFromDocumentName(features.GetPrintJobDocumentName(),
                                                                       creator))
        features.SetStringValue(FEAT_CREATOR_NAME_PDL, creator, true);
}
