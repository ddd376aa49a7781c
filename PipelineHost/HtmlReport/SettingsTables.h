#pragma once

#include "Commands/FeatureReport.h"
#include "Commands/PolicyReport.h"
#include "Commands/SettingsReport.h"
#include "Commands/TicketExplanation.h"
#include "HtmlReport/HtmlText.h"

namespace OvPipeline {

/// What holds at a level: each setting with where it came from and what was changed, and what a filter hears.
HtmlText SettingsTables(const std::vector<TicketExplanation::Row>& rows,
                        const std::vector<SettingsReport::Setting>& heard);

/// What the job asks for, feature by feature: those that the device or the job knows.
HtmlText FeaturesTable(const FeatureReport& report);

/// What the administrator's configuration does; empty where there is none.
HtmlText PolicyTable(const PolicyReport& report);

} // namespace OvPipeline
