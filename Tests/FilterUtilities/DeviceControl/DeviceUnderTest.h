#pragma once

#include "Support/InApartment.h"
#include "Support/TableFeatureAccess.h"

#include <DeviceControl/PrintInstructionGenerator.h>
#include <DeviceDescription/OrvelDriverPropertyBag.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <string>

/// A bag with the two documents that a device brings with it.
class DeviceBag final : public IPrinterPropertyBagAccess {
public:
    CPString productData;
    CPString deviceCapabilities;

    bool IsPropertyBagNull() override { return false; }
    bool GetPrinterPropertyBagBool(const CXString&) const override { return false; }
    int GetPrinterPropertyBagInteger(const CXString&) const override { return 0; }
    void GetPrinterPropertyBagString(const CXString&, CXString& out) const override { out.Empty(); }
    void GetPrinterPropertyBagBytes(const CXString&, ByteBuffer& out) const override { out.clear(); }
    void GetPrinterPropertyBagStreamBuffer(const CXString&, ByteBuffer& out) const override { out.clear(); }
    void GetPrinterPropertyBagStreamAsCPString(const CXString& key, CPString& out) const override {
        out = key == OrvelDriverPropertyBag::productDataPropertyName ? productData : deviceCapabilities;
    }
    void GetPrinterPropertyBagCompressedStreamBuffer(const CXString&, ByteBuffer& out) const override {
        out.clear();
    }
    void SetPrinterPropertyBagBool(const CXString&, bool) override {}
    void SetPrinterPropertyBagInteger(const CXString&, int) override {}
    void SetPrinterPropertyBagString(const CXString&, const CXString&) override {}
    void SetPrinterPropertyBagBytes(const CXString&, const ByteBuffer&) override {}
    void SetPrinterPropertyBagStreamBuffer(const CXString&, const ByteBuffer&) override {}
};

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
