#pragma once

#include "Support/DeviceBag.h"
#include "Support/InApartment.h"
#include "Support/TableFeatureAccess.h"

#include <DeviceControl/PrintInstructionGenerator.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <string>

/// The three texts of a family, as UTF-8.
struct Instructions {
    std::string pjl;
    std::string setup;
    std::string trailer;
};

/// A job and a device, each as a test fills it.
class DeviceUnderTest : public InApartment<> {
protected:
    using Family = void (PrintInstructionGenerator::*)(CXString&, CXString&, CXString&);

    Instructions Of(Family family) {
        return Written([&](PrintInstructionGenerator& generator, CXString& pjl, CXString& setup,
                           CXString& trailer) { (generator.*family)(pjl, setup, trailer); });
    }
    Instructions OfHarrier(bool filterDoesColorCorrection = false) {
        return Written(
            [&](PrintInstructionGenerator& generator, CXString& pjl, CXString& setup, CXString& trailer) {
                generator.GenerateLegacyHarrierPostScript(pjl, setup, trailer, filterDoesColorCorrection);
            });
    }
    Instructions OfMerlinPostScript() {
        return Written(
            [&](PrintInstructionGenerator& generator, CXString& pjl, CXString& setup, CXString& trailer) {
                generator.GenerateLegacyMerlinPostScript(pjl, setup, trailer, true);
            });
    }
    Instructions OfPclm() {
        return Written(
            [&](PrintInstructionGenerator& generator, CXString& pjl, CXString& ticket, CXString& rest) {
                rest.Empty();
                generator.GenerateSpecialLowEndPCLm(pjl, ticket);
            });
    }

    TableFeatureAccess m_job;
    DeviceBag m_bag;

private:
    template <typename Call>
    Instructions Written(Call call) {
        OrvelDriverPropertyBag device(m_bag);
        PrintInstructionGenerator generator(m_job, device);
        CXString pjl = L"left over";
        CXString setup = L"left over";
        CXString trailer = L"left over";
        call(generator, pjl, setup, trailer);
        using CPStringUtils::narrowToStdString;
        return {narrowToStdString(pjl), narrowToStdString(setup), narrowToStdString(trailer)};
    }
};
