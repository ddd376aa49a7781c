#include "FilterUtilities/DeviceControl/DeviceUnderTest.h"
#include "Support/Rows.h"

#include <DeviceControl/HeldJobPasscode.h>
#include <Encryption/DataEncrypter.h>
#include <Finishing/OcptImportAndExport.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

using namespace DataModelIds;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

using Generator = PrintInstructionGenerator;

// The framework's own expressions differ from system to system.
MATCHER_P(HasMatch, expression, "") { return std::regex_search(arg, std::regex(expression)); }

std::string Snippet(const std::string& feature, const std::string& option, const std::string& command) {
    return "\nfeaturebegin{\n%%BeginFeature: *" + feature + " " + option + "\n\t" + command +
           "\n%%EndFeature\n}featurecleanup\n";
}

std::string Scrambled(const wchar_t* password) {
    const ByteBuffer bytes = DataEncrypter::EncryptStringWithOrvelSimple1(password);
    return {bytes.begin(), bytes.end()};
}

const std::string noFinishing = Snippet("Stapling", "None", "<< /Staple 0 >> setpagedevice") +
                                Snippet("Punching", "None", "%% Punch Off");

class Kestrel : public DeviceUnderTest {
protected:
    Instructions Generate() { return Of(&Generator::GenerateLegacyKestrelPostScript); }
};

TEST_F(Kestrel, SaysWhatAJobThatAsksForNothingNeeds) {
    m_job.Set(FEAT_JOB_NAME, L"Br\u00FCcke").Set(FEAT_CREATOR_VERSION_PDL, L"16");
    const Instructions instructions = Generate();
    EXPECT_EQ(instructions.pjl,
              "@PJL COMMENT OVLbegin\n"
              "@PJL COMMENT OID_ATT_JOB_OWNER \"user\";\n"
              "@PJL COMMENT OID_ATT_JOB_NAME \"Br\xC3\xBC"
              "cke\";\n"
              "@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_PRINT;\n"
              "@PJL COMMENT OID_ATT_CONTENT_ORIENTATION OID_VAL_CONTENT_ORIENTATION_PORTRAIT;\n"
              "@PJL COMMENT OVLend\n");
    EXPECT_EQ(
        instructions.setup,
        noFinishing +
            Snippet("Trapping", "ON\n<<",
                    "/PostRenderingEnhance true /PostRenderingEnhanceDetails currentpagedevice 1 index get 1 "
                    "dict copy dup /Type 33 put dup /ColorTrapping true put\n    /PostRenderingEnhance true "
                    "/PostRenderingEnhanceDetails currentpagedevice 1 index get 1 dict copy dup /Type 33 put "
                    "dup /BlackTrapping true put\n>> setpagedevice") +
            Snippet("Color-Correction", "Automatic",
                    "orvel$VirtualColorDevice /ColorTransform /Automatic put"));
    EXPECT_EQ(instructions.trailer, "") << "a version of no application says nothing";
}

TEST_F(Kestrel, SaysWhatASavedJobInColorNeeds) {
    const auto info = [](tagFeatureEnum feature) {
        return FeaturePath(FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, feature);
    };
    m_bag.productData =
        "<product><print-quality-level><photographic PCL6=\"x\" PS=\"@PJL SET Q=&lt;3&gt;\\n\"/>"
        "</print-quality-level></product>";
    m_job.orientation = VAL_MS_ORIENTATION_LANDSCAPE;
    m_job.Set(FEAT_JOB_NAME, L"name")
        .Choose(FEAT_JOB_TYPE, VAL_JOB_TYPE_SAVED_PRINT)
        .Choose({FEAT_SAVE_COL, FEAT_SAVE_DISPOSITION}, VAL_SAVE_DISPOSITION_PRINT_SAVE)
        .Set(info(FEAT_SAVE_NAME), L"1234567890123456789012345678901234567890X")
        .Choose(info(FEAT_SAVE_ACCESS), VAL_SAVE_ACCESS_PRIVATE)
        .SetPassword(info(FEAT_SAVE_PASSWORD), "1234")
        .SetFlag(FEAT_START_SHEET_FROM_APPLICATION, true)
        .Set(FEAT_JOB_ACCT_USER_ID, L"ann")
        .Set(FEAT_JOB_ACCT_ACCOUNT_ID, L"42")
        .Choose({FEAT_JOB_ACCT_COL, FEAT_DEV_INSTALLABLE_JOB_ACCT_SYSTEM_ACTUAL},
                VAL_JOB_ACCT_SYSTEM_STANDARD)
        .Choose(FEAT_JOB_ACCT_ACCOUNT_TYPE, VAL_ACCT_GROUP_ACCOUNT)
        .Choose(FEAT_PRINT_QUALITY_LEVEL, VAL_QUALITY_PHOTO)
        .Choose(FEAT_FINISHING_STAPLE, VAL_FINISHING_1_STAPLE)
        .Choose(FEAT_FINISHING_FOLD, VAL_FINISHING_C_FOLD_PI)
        .Choose(FEAT_TRAPPING, VAL_TRAPPING_OFF)
        .Choose(FEAT_JOB_OFFSET_API, VAL_JOB_OFFSET_SET)
        .Choose(FEAT_DISPLAY_COLOR_CORRECTION, VAL_SOURCE_RGB_NONE)
        .Set(FEAT_LIGHTNESS, -5)
        .Set(FEAT_COLORBALANCE_YELLOW_BLUE, 7)
        .Set(FEAT_CREATOR_VERSION_ATTRIBUTES, L"5.1")
        .Set(FEAT_CREATOR_NAME_PDL, L"winword")
        .Set(FEAT_CREATOR_VERSION_PDL, L"16");
    const Instructions instructions = Generate();
    EXPECT_EQ(instructions.pjl,
              "@PJL COMMENT OVLbegin\n"
              "@PJL COMMENT OID_ATT_JOB_OWNER \"user\";\n"
              "@PJL COMMENT OID_ATT_JOB_NAME \"name\";\n"
              "@PJL COMMENT OID_ATT_SAVE_DISPOSITION OID_VAL_SAVE_DISPOSITION_PRINT_SAVE;\n"
              "@PJL COMMENT OID_ATT_SAVE_NAME \"1234567890123456789012345678901234567890\";\n"
              "@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_SECURE_PRINT;\n"
              "@PJL COMMENT OID_ATT_JOB_PASSWORD \"" +
                  Scrambled(L"1234") +
                  "\";\r\n"
                  "@PJL COMMENT OID_ATT_START_SHEET OID_VAL_JOB_SHEET_USER;\n"
                  "@PJL COMMENT OID_ATT_CONTENT_ORIENTATION OID_VAL_CONTENT_ORIENTATION_LANDSCAPE;\n"
                  "@PJL COMMENT OID_ATT_ACCOUNTING_INFORMATION_AVP \"OVL_USERID,ann\";\r\n"
                  "@PJL COMMENT OID_ATT_ACCOUNTING_INFORMATION_AVP \"OVL_GROUPACCT,42\";\r\n"
                  "@PJL SET Q=<3>\n"
                  "@PJL COMMENT OID_ATT_COLOR_MODE OID_VAL_COLOR_MODE_NONE;\n"
                  "@PJL COMMENT OVLend\n");
    EXPECT_THAT(
        instructions.setup,
        StartsWith(Snippet("Stapling", "Single-Landscape",
                           "<< /Staple 3 /StapleDetails << /Type 1 /StapleLocation (SingleLandscape) >> >> "
                           "setpagedevice")));
    EXPECT_THAT(
        instructions.setup,
        EndsWith(Snippet("Trapping", "OFF\n<<",
                         "/PostRenderingEnhance currentpagedevice 1 index get 1 dict copy dup /Type 33 put "
                         "dup /ColorTrapping false put\n    /PostRenderingEnhance currentpagedevice 1 index "
                         "get 1 dict copy dup /Type 33 put dup /BlackTrapping false put\n>> setpagedevice") +
                 Snippet("job-offset", "offset-set\n<<", "/Jog 3\n>> setpagedevice") +
                 Snippet("Color-Correction", "None", "orvel$VirtualColorDevice /ColorTransform /None put") +
                 Snippet("OVLLightness", " -5", "orvel$Transform /Lightness -5 100 div put") +
                 Snippet("OVLYellowBlue", " 7", "orvel$Transform /CastYellow 7 -100 div put")));
    EXPECT_EQ(instructions.trailer, "%%OrvelVersion: 5.1\n%%OvlPrintingApp: winword 16\n");
}

TEST_F(Kestrel, WritesACustomCorrectionSectionBySection) {
    m_job.Choose(FEAT_DISPLAY_COLOR_CORRECTION, VAL_CUSTOM_COLOR_CORRECTION)
        .Choose(FEAT_SOURCE_CMYK_COLOR, VAL_SOURCE_CMYK_COMMERCIAL)
        .Choose(FEAT_SOURCE_GRAY_COLOR, VAL_BLACK_CONFIG_USE_RGB_COLOR_SETTINGS)
        .Choose(FEAT_SOURCE_RGB_COLOR, VAL_SOURCE_RGB_SRGB)
        .Choose(FEAT_SOURCE_SPOT_COLOR, VAL_SOURCE_RGB_BLACK_AND_WHITE)
        .Choose(FEAT_OUTPUT_RENDERING_INTENT, VAL_OUTPUT_RENDERING_PERCEPTUAL);
    const std::string cmyk =
        Snippet("PressMatchText", "Commercial",
                "orvel$CMYKGraphicsTransform /Intent "
                "/Commerical-Coated put") +
        Snippet("PressMatchImages", "Commercial", "orvel$CMYKImagesTransform /Intent /Commerical-Coated put");
    const std::string rgb =
        Snippet("OfficeColorText", "sRGB-Display", "orvel$RGBGraphicsTransform /Intent /Display-sRGB put") +
        Snippet("OfficeColorImages", "sRGB-Display", "orvel$RGBGraphicsTransform /Intent /Display-sRGB put");
    const std::string rest =
        Snippet("SpotColorText", "Black-and-White", "orvel$SpotGraphicsTransform /Intent /Mono-Image put") +
        Snippet("SpotColorImages", "Black-and-White", "orvel$SpotImagesTransform /Intent /Mono-Image put") +
        Snippet("CIEColorText", "Perceptual", "orvel$CIEGraphicsTransform /Intent /CIE-Perceptual put") +
        Snippet("CIEColorImages", "Perceptual", "orvel$CIEImagesTransform /Intent /CIE-Perceptual put");
    EXPECT_THAT(Generate().setup, EndsWith(cmyk + rgb + rgb + rest));

    // Gray by nothing that is known; black and white has no gray of its own. A copy of CMYK; the images
    // alone.
    m_job.Choose(FEAT_SOURCE_GRAY_COLOR, VAL_SOURCE_RGB_BLACK_AND_WHITE);
    EXPECT_THAT(Generate().setup, HasSubstr(cmyk +
                                            Snippet("GrayText", "Black-and-White",
                                                    "orvel$GrayGraphicsTransform /Intent /Mono-Graphic put") +
                                            Snippet("GrayImages", "Black-and-White",
                                                    "orvel$GrayImagesTransform  /Intent /Mono-Graphic put") +
                                            rgb));
    m_job.Choose(FEAT_SOURCE_GRAY_COLOR, VAL_BLACK_CONFIG_USE_CMYK_COLOR_SETTINGS)
        .Choose(FEAT_SOURCE_RGB_COLOR, VAL_SOURCE_RGB_NONE);
    EXPECT_THAT(
        Generate().setup,
        HasSubstr(cmyk + cmyk +
                  Snippet("OfficeColorText", "None", "orvel$RGBGraphicsTransform /Intent /None put") +
                  Snippet("OfficeColorImages", "None", "orvel$RGBImagesTransform /Intent /None put")));

    m_job.Choose(FEAT_COLOR_EFFECTS, VAL_COLOR_EFFECTS_GRAYSCALE);
    EXPECT_THAT(Generate().setup,
                EndsWith("orvel$VirtualColorDevice /Type 1 put\n%%EndFeature\n}featurecleanup\n"));
}

TEST_F(DeviceUnderTest, EachFamilySaysTheJobsTypeInItsOwnWords) {
    const auto kestrel = &Generator::GenerateLegacyKestrelPostScript;
    const auto merlin = &Generator::GenerateLegacyMerlinPCL6;
    m_job.SetPassword(FEAT_JOB_PASSWORD, "99").SetTime(FEAT_JOB_PRINT_AFTER, UtcTime());
    const std::string secure = "@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_SECURE_PRINT;\n"
                               "@PJL COMMENT OID_ATT_JOB_PASSWORD \"" +
                               Scrambled(L"99") + "\";\r\n";
    m_job.Choose(FEAT_JOB_TYPE, VAL_JOB_TYPE_SECURE_PRINT);
    EXPECT_THAT(Of(kestrel).pjl, HasSubstr(secure));
    EXPECT_THAT(Of(&Generator::GenerateLegacyOspreyPostScript).pjl, HasSubstr(secure));
    EXPECT_THAT(Of(merlin).pjl, HasSubstr(secure));
    EXPECT_THAT(OfHarrier().pjl,
                StartsWith("@PJL XSECUREJOB\n@PJL XJOBPASSWORD = 99\r\n@PJL JOB NAME = \"\"\r\n"));

    m_job.Choose(FEAT_JOB_TYPE, VAL_JOB_TYPE_DELAYED_PRINT);
    EXPECT_THAT(Of(kestrel).pjl, Not(HasSubstr("OID_ATT_JOB_TYPE")));
    for (const auto family : {&Generator::GenerateLegacyOspreyPostScript, merlin})
        EXPECT_THAT(Of(family).pjl, HasMatch("@PJL COMMENT OID_ATT_JOB_PRINT_AFTER \"[0-9]{14}\";\n"));

    m_job.Choose(FEAT_JOB_TYPE, VAL_JOB_TYPE_NORMAL_PRINT);
    EXPECT_THAT(OfMerlinPostScript().pjl, StartsWith("@PJL COMMENT NORMAL PRINT\n@PJL JOB NAME"));
    EXPECT_THAT(OfHarrier().pjl, StartsWith("@PJL JOB NAME"));
}

TEST_F(DeviceUnderTest, HarrierTakesColorFromTheProductAndCoversUnlessTheTicketHasThem) {
    m_bag.productData = "<p><odrv-color-output-correction><srgb PS=\"S\"/><automatic PS=\"A\"/>"
                        "<monochrome-grayscale PS=\"G\"/></odrv-color-output-correction></p>";
    for (const auto& [selection, isFiltered, expected] : Rows<tagValueEnum, bool, std::string>{
             {VAL_SOURCE_RGB_SRGB, false, Snippet("Color Correction", "SRGB", "S")},
             {VAL_SOURCE_RGB_SRGB, true, Snippet("Color Correction", "Automatic", "A")},
             {VAL_SOURCE_RGB_LCD, false, Snippet("Color Correction", "RGB_LCD", "")},
             {VAL_COLOR_EFFECTS_GRAYSCALE, true, Snippet("Color Correction", "Grayscale", "G")},
             {VAL_ADJUST_COLOR_VIVID, false, Snippet("Color Correction", "Automatic", "A")}}) {
        m_job.Choose(FEAT_DISPLAY_COLOR_CORRECTION, selection);
        EXPECT_EQ(OfHarrier(isFiltered).setup, expected) << selection << isFiltered;
    }
    m_job.Choose(FEAT_COLOR_EFFECTS, VAL_COLOR_EFFECTS_GRAYSCALE);
    EXPECT_EQ(OfHarrier(true).setup, Snippet("Color Correction", "Grayscale", "G"));

    m_job = {};
    m_job.Choose(FEAT_SOURCE_RGB_COLOR, VAL_SOURCE_RGB_SRGB)
        .Choose(FEAT_SOURCE_CMYK_COLOR, VAL_SOURCE_RGB_SRGB);
    const std::string custom =
        Snippet("Spot Text and Graphics Color Correction", "", "orvel$Intent 5 (Automatic) put") +
        Snippet("Spot Images Correction", "", "orvel$Intent 6 (Automatic) put") +
        Snippet("RGB Text and Graphics Color Correction", "", "orvel$Intent 1 (Display-sRGB) put") +
        Snippet("RGB Images Color Correction", "", "orvel$Intent 2 (Display-sRGB) put") +
        Snippet("CMYK Text and Graphics Color Correction", "", "orvel$Intent 3 (Automatic) put") +
        Snippet("CMYK Images Correction", "", "orvel$Intent 4 (Automatic) put");
    EXPECT_EQ(OfHarrier().setup, custom);

    const auto covers = [](const char* tray, const char* number, const char* pages, const char* command) {
        return Snippet("OVLCoverPageSource", tray,
                       std::string("userdict /orvel$CoverPageSource ") + number + " put") +
               Snippet("OVLCoverPage", pages, command);
    };
    const char* const first =
        "1\norvel$CoverPageSource\n/RRCustomProcs /ProcSet findresource /setcoverpages get exec ";
    m_job.Choose({FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_INPUT_TRAY}, VAL_INPUT_TRAY_3)
        .Choose(FEAT_COVER_OPTIONS, VAL_COVER_OPTION_NONE);
    EXPECT_EQ(OfHarrier().setup, custom + covers("Tray1", "0", "None", ""));
    m_job.Choose(FEAT_COVER_OPTIONS, VAL_COVER_FRONT_ONLY);
    EXPECT_EQ(OfHarrier().setup, custom + covers("Tray3", "2", "First", first));
    m_job.Choose(FEAT_COVER_OPTIONS, VAL_COVER_BACK_ONLY);
    EXPECT_THAT(OfHarrier().setup, HasSubstr("*OVLCoverPage FirstLast\n\torvel$booklet_job {2}{3} ifelse\n"));
    m_job.Choose(FEAT_COVER_OPTIONS, VAL_COVER_BOTH_SAME).Choose(FEAT_BOOKLET, VAL_BOOKLET_ON);
    EXPECT_EQ(OfHarrier().setup, custom + covers("Tray3", "2", "First", first));
}

TEST_F(DeviceUnderTest, JobsSavedForOnePersonHaveAnotherName) {
    const auto info = [](tagFeatureEnum feature) {
        return FeaturePath(FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, feature);
    };
    m_job.Set(FEAT_JOB_NAME, L"name")
        .Choose(FEAT_JOB_TYPE, VAL_JOB_TYPE_PERSONAL_SAVED_PRINT)
        .Set(info(FEAT_SAVE_NAME), L"other")
        .SetPassword(info(FEAT_SAVE_PASSWORD), "1234")
        .Choose(FEAT_TONER_SAVER, VAL_TONER_SAVER_ON)
        .Choose(FEAT_PRINT_QUALITY_LEVEL, VAL_QUALITY_ENHANCED)
        .Set(FEAT_CREATOR_VERSION_ATTRIBUTES, L"5.1");
    const std::string personal = "@PJL XPERSONALSAVEDJOB\n"
                                 "@PJL XJOBPASSWORD = 1234\r\n";
    const std::string names = "@PJL JOB NAME = \"other\"\r\n"
                              "@PJL XJAUSERNAME = \"user\"\r\n"
                              "@PJL COMMENT OID_ATT_JOB_NAME \"other\"\r\n"
                              "@PJL SET ECONOMODE = ON\n";
    const std::string quality = "@PJL SET DARKENTEXT = ON\n"
                                "@PJL SET IMAGEQUALITY = 2\n"
                                "@PJL SET RESOLUTION = 1200\n";
    EXPECT_EQ(OfHarrier().pjl, personal + names);
    const Instructions merlin = OfMerlinPostScript();
    EXPECT_EQ(merlin.pjl, personal + names + quality);
    EXPECT_EQ(merlin.setup, "");
    EXPECT_EQ(merlin.trailer, "%%OrvelVersion: 5.1\n");

    m_job.Choose(info(FEAT_SAVE_ACCESS), VAL_SAVE_ACCESS_PUBLIC);
    EXPECT_EQ(OfHarrier().pjl, "@PJL XSAVEDJOB\n" + names);
    EXPECT_EQ(OfMerlinPostScript().pjl, "@PJL XSAVEDJOB\n" + names + quality);
}

TEST_F(DeviceUnderTest, OspreySendsFaxes) {
    const auto recipient = [](unsigned index, tagFeatureEnum feature) {
        return FeaturePath(FEAT_FAX_OUT_COL, FEAT_FAX_RECIPIENT_COL, feature).At(index);
    };
    m_job.Specify(FEAT_FAX_OUT_COL)
        .Set({FEAT_FAX_OUT_COL, FEAT_FAX_DIAL_PREFIX}, L"  ")
        .Set(recipient(0, FEAT_FAX_RECIPIENT_PHONE), L"0123")
        .Set(recipient(1, FEAT_FAX_RECIPIENT_PHONE), L"0456")
        .Set(recipient(1, FEAT_FAX_RECIPIENT_MAILBOX), 3)
        .SetPassword({FEAT_FAX_OUT_COL, FEAT_FAX_BILLING_COL, FEAT_FAX_CREDIT_CARD}, "4711")
        .Choose({FEAT_FAX_OUT_COL, FEAT_FAX_RESOLUTION}, VAL_FAX_RESOLUTION_FINE)
        .Choose({FEAT_FAX_OUT_COL, FEAT_FAX_TYPE}, VAL_FAX_TYPE_G3_AUTO)
        .Choose({FEAT_FAX_OUT_COL, FEAT_FAX_CONFIRMATION}, VAL_FAX_CONFIRMATION_ON)
        .Choose(FEAT_JOB_TYPE, VAL_JOB_TYPE_PROOF_PRINT)
        .Choose(FEAT_TONER_SAVER, VAL_TONER_SAVER_ON);
    const Instructions instructions = Of(&Generator::GenerateLegacyOspreyPostScript);
    EXPECT_EQ(instructions.pjl,
              "@PJL COMMENT OVLbegin\n"
              "@PJL COMMENT OID_ATT_JOB_OWNER \"user\";\n"
              "@PJL COMMENT OID_ATT_JOB_OWNER_DOMAIN \"domain\";\n"
              "@PJL COMMENT OID_ATT_JOB_NAME \"\";\n"
              "@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n"
              "@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"0123\";\r\n"
              "@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"0456\";\r\n"
              "@PJL COMMENT OID_ATT_FAX_MAILBOX \"3\";\r\n"
              "@PJL COMMENT OID_ATT_CREDIT_CARD \"4711\";\r\n"
              "@PJL COMMENT OID_ATT_FAX_RESOLUTION 1\r\n"
              "@PJL COMMENT OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_AUTO\r\n"
              "@PJL COMMENT OID_ATT_FAX_CONFIRMATION_SHEET TRUE\r\n"
              "@PJL COMMENT OID_ATT_CONTENT_ORIENTATION OID_VAL_CONTENT_ORIENTATION_PORTRAIT;\r\n"
              "@PJL COMMENT OVLend\n");
    EXPECT_EQ(instructions.setup, noFinishing);

    m_job.Set({FEAT_FAX_OUT_COL, FEAT_FAX_DIAL_PREFIX}, L"9")
        .Choose({FEAT_FAX_OUT_COL, FEAT_FAX_SEND_TIME_MODE}, VAL_FAX_SEND_AT_TIME)
        .SetTime({FEAT_FAX_OUT_COL, FEAT_JOB_PRINT_AFTER}, UtcTime());
    const std::string later = Of(&Generator::GenerateLegacyOspreyPostScript).pjl;
    EXPECT_THAT(later, HasSubstr("OID_ATT_FAX_DESTINATION_PHONE \"9,0123\";\r\n"));
    EXPECT_THAT(later, HasMatch("OID_ATT_JOB_FAX_AFTER \"[0-9]{14}\";\n"));
}

TEST_F(DeviceUnderTest, OspreyPrintsByItsOwnLinesAndSettings) {
    m_job.Choose(FEAT_TONER_SAVER, VAL_TONER_SAVER_OFF)
        .Set(FEAT_TONER_DENSITY, 1)
        .Choose(FEAT_OUTPUT_FACE, tagValueEnum{7103})
        .Choose(FEAT_JOB_OFFSET_API, VAL_JOB_OFFSET_NONE)
        .Set(FEAT_DEV_ACCT_USER_ID, L"walk-up")
        .Set(FEAT_JOB_ACCT_GENERAL_ID, L"7")
        .Choose({FEAT_JOB_ACCT_COL, FEAT_DEV_INSTALLABLE_JOB_ACCT_SYSTEM_ACTUAL},
                VAL_JOB_ACCT_SYSTEM_STANDARD)
        .Choose(FEAT_DEV_ACCT_ACCOUNT_TYPE, VAL_ACCT_GENERAL_ACCOUNT)
        .Choose(FEAT_PRINT_RESOLUTION, VAL_RESOLUTION_1200);
    const Instructions instructions = Of(&Generator::GenerateLegacyOspreyPostScript);
    EXPECT_THAT(instructions.pjl,
                HasSubstr("@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_PRINT;\n"
                          "@PJL SET ECONOMODE = OFF\n"
                          "@PJL SET DENSITY=3\n"
                          "@PJL COMMENT OID_ATT_OUTPUT_FACE_UP FALSE;\n"
                          "@PJL SET JOBOFFSET = OFF\n"
                          "@PJL COMMENT OID_ATT_ACCOUNTING_INFORMATION_AVP \"OVL_USERID,walk-up\";\r\n"
                          "@PJL COMMENT OID_ATT_ACCOUNTING_INFORMATION_AVP \"OVL_GENERALACCT,7\";\r\n"));
    EXPECT_EQ(
        instructions.setup,
        noFinishing + Snippet("job-offset", "none", "<< /Jog 0 >> setpagedevice") +
            Snippet(
                "Resolution", "DPI_1200_X_1200",
                "(<<) cvx exec /DeviceRenderingInfo (<<) cvx exec /Type 4 /ValuesPerColorComponent 2 (>>) "
                "cvx exec (>>) cvx exec setpagedevice(<< ) cvx exec / HWResolution[1200 1200](>> ) cvx "
                "exec setpagedevice"));

    // Who has to log on at the device anyway is not asked for here.
    m_job.Choose({FEAT_JOB_ACCT_COL, FEAT_JOB_ACCT_PROMPT_MODE}, VAL_ACCT_PROMPT_AT_DEVICE);
    EXPECT_THAT(Of(&Generator::GenerateLegacyOspreyPostScript).pjl, Not(HasSubstr("ACCOUNTING")));
}

TEST_F(DeviceUnderTest, AHeldJobHasTheSamePasscodeWithinASecond) {
    const HeldJobPasscode::Clock clock = HeldJobPasscode::SetClock([] {
        std::tm noon{};
        noon.tm_year = 126;
        noon.tm_mday = 1;
        noon.tm_hour = 12;
        return UtcTime(noon);
    });
    m_bag.deviceCapabilities =
        "<DeviceCapabilities version='1.0'><Option name='hold-for-authentication' opif='1'>"
        "<Value name='user-id'/></Option></DeviceCapabilities>";
    m_job.Choose(FEAT_JOB_TYPE, VAL_JOB_TYPE_SECURE_PRINT)
        .Choose(FEAT_HOLD_FOR_AUTHENTICATION, VAL_HOLD_FOR_AUTHENTICATION_USER_ID);
    const std::string pjl = Of(&Generator::GenerateLegacyOspreyPostScript).pjl;
    EXPECT_THAT(pjl, HasMatch("OID_ATT_JOB_PASSWORD \"[1-9][0-9]{3}\";\r\n"));
    EXPECT_EQ(pjl, Of(&Generator::GenerateLegacyOspreyPostScript).pjl);
    HeldJobPasscode::SetClock(clock);
}

TEST_F(DeviceUnderTest, MerlinWritesPcl6CoversIntoThePjl) {
    m_job.outputSize = {{Dimension(210, Dimension::Millimeter), Dimension(11, Dimension::Inch)}};
    m_job.Choose(FEAT_FINISHING_STAPLE, VAL_FINISHING_1_STAPLE)
        .Choose(FEAT_COLLATION, VAL_COLLATION_UNCOLLATED)
        .Choose(FEAT_COVER_OPTIONS, VAL_COVER_BOTH_DIFFERENT)
        .Choose({FEAT_FRONT_COVER, FEAT_COVER_TYPE}, VAL_COVER_TYPE_BLANK)
        .Choose({FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_EFFECTIVE_MEDIA_TYPE}, VAL_MEDIA_TYPE_BOND)
        .Choose({FEAT_MEDIA_COL, FEAT_MEDIA_COLOR}, VAL_MEDIA_COLOR_NO_COLOR)
        .Choose({FEAT_JOB_ACCT_COL, FEAT_DEV_INSTALLABLE_JOB_ACCT_SYSTEM_ACTUAL}, VAL_JOB_ACCT_SYSTEM_NETWORK)
        .Set(FEAT_JOB_ACCT_USER_ID, L"ann")
        .Set(FEAT_CREATOR_NAME_PDL, L"excel");
    const Instructions instructions = Of(&Generator::GenerateLegacyMerlinPCL6);
    EXPECT_EQ(instructions.pjl, "@PJL COMMENT OvlPrintingApp: excel\n"
                                "@PJL COMMENT OVLbegin\n"
                                "@PJL COMMENT OID_ATT_JOB_OWNER \"user\"\n"
                                "@PJL COMMENT OID_ATT_JOB_NAME \"\"\n"
                                "@PJL COMMENT OID_ATT_OUTPUT OID_VAL_OUTPUT_NO_PAGE_COLLATE;\n"
                                "@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_PRINT;\n"
                                "@PJL COMMENT OID_ATT_ACCOUNTING_INFORMATION_AVP \"OVL_USERID,ann\";\n"
                                "@PJL SET RENDERMODE=COLOR\n"
                                "@PJL COMMENT OID_ATT_FIRSTLAST_PAGE_IMAGED FALSE;\r\n"
                                "@PJL COMMENT OID_ATT_FIRSTLAST_PAGE_MEDIA_TYPE \"Bond\";\r\n"
                                "@PJL COMMENT OID_ATT_FIRSTLAST_PAGE_MEDIA_COLOR \"Clear\";\r\n"
                                "@PJL COMMENT OID_ATT_FIRSTLAST_PAGE_MEDIA_SIZE \"210 279\";\r\n"
                                "@ PJL COMMENT OVLSTAPLE=PORTRAIT\n"
                                "@PJL COMMENT OVLend\n");
    EXPECT_EQ(instructions.setup + instructions.trailer, "");

    m_job.Choose(FEAT_FINISHING_UNSPECIFIED, VAL_FINISHING_UNSPECIFIED_ON);
    EXPECT_THAT(Of(&Generator::GenerateLegacyMerlinPCL6).pjl, Not(HasSubstr("OVLSTAPLE")));
    m_job.outputSize.reset();
    m_job.Choose(FEAT_COVER_OPTIONS, VAL_COVER_BACK_ONLY);
    const std::string back = Of(&Generator::GenerateLegacyMerlinPCL6).pjl;
    EXPECT_THAT(back, HasSubstr("OID_ATT_LAST_PAGE_IMAGED TRUE;\r\n"));
    EXPECT_THAT(back, HasSubstr("OID_ATT_LAST_PAGE_MEDIA_TYPE \"Unspecified\";\r\n"));
    EXPECT_THAT(back, Not(HasSubstr("MEDIA_SIZE")));
}

TEST_F(DeviceUnderTest, SmallDevicesGetTheirControllersWords) {
    m_job.Choose(FEAT_PAGE_LAYOUT, VAL_PAGE_LAYOUT_NUP_4)
        .Set(FEAT_COPIES, 3)
        .Choose(FEAT_COLLATION, VAL_COLLATION_UNCOLLATED)
        .Choose({FEAT_MEDIA_COL, FEAT_EFFECTIVE_MEDIA_TYPE}, VAL_MEDIA_TYPE_CUSTOM7)
        .Choose({FEAT_MEDIA_COL, FEAT_INPUT_TRAY}, VAL_INPUT_TRAY_MANUAL)
        .Choose(FEAT_SIDES_IMAGED, VAL_SIDES_TWO_SIDED_ANY);
    const char* const head = "\x1B%-12345X@PJL JOB\n@PJL SET STRINGCODESET=UTF8\n@PJL SET USERNAME=\"user\"\n"
                             "@PJL SET JOBNAME=\"\"\n@PJL SET LHOSTID=\"";
    const std::string color = "@PJL SET LCOLORMODEL=CMYK\n@PJL SET RENDERMODE=COLOR\n";
    const std::string copies = "@PJL SET COPIES=3\n@PJL SET LCOLLATION=OFF\n" + color;
    const std::string postScript = Of(&Generator::GenerateSpecialLowEndPS).pjl;
    EXPECT_THAT(postScript, StartsWith(head));
    EXPECT_THAT(postScript, EndsWith("@PJL COMMENT \"NUP = 4\"\r\n@PJL SET LMULTIPAGEPRINT=OFF\r\n" + color));
    EXPECT_THAT(Of(&Generator::GenerateSpecialLowEndPCL6).pjl, EndsWith("\"\n" + copies));
    const Instructions pclm = OfPclm();
    EXPECT_THAT(pclm.pjl, EndsWith("\"\n" + copies));
    EXPECT_EQ(pclm.setup,
              "%LexHBP-1.0\n%  LexHBP-Page-Ticket\n%      page-ticket-version: 1.0\n"
              "%    MediaHandlingSection\n%      media-type: custom-lxk7\n%      media-source: manual\n"
              "%      sides: \n%      output-bin: auto\n%  LexHBP-Page-Ticket-End\n");

    m_job = {};
    EXPECT_THAT(OfPclm().pjl, EndsWith("\"\n@PJL SET COPIES=1\n@PJL SET LCOLLATION=ON\n" + color));
}

TEST_F(DeviceUnderTest, FinishingsAreThoseOfTheFirstFeatureThatHasAny) {
    const Dimension width(210, Dimension::Millimeter);
    const Dimension height(297, Dimension::Millimeter);
    const auto finishings = [&](tagValueEnum staple, bool isPosition, tagValueEnum holes,
                                tagValueEnum place) {
        return OcptImportAndExport::CalculateCpssFinishingsValuesFromDriverFeaturesAndDocSettings(
            staple, isPosition, holes, place, VAL_UNSPECIFIED, VAL_UNSPECIFIED, VAL_UNSPECIFIED,
            VAL_UNSPECIFIED, width, height, VAL_MS_ORIENTATION_PORTRAIT, VAL_UNSPECIFIED, VAL_UNSPECIFIED,
            false, VAL_UNSPECIFIED, VAL_UNSPECIFIED, false);
    };
    const auto ofJob = [&] {
        m_job.outputSize = {{width, height}};
        return Generator::CalculateCppsFinishingsValuesFromIFilterFeatureAccess(m_job);
    };
    constexpr auto none = VAL_UNSPECIFIED;
    constexpr auto left = VAL_FINISHING_HOLE_PUNCH_PLLT;
    for (const auto& [feature, holes] :
         Rows<tagFeatureEnum, tagValueEnum>{{FEAT_FINISHING_4_HOLE_PUNCH, VAL_FINISHING_4_HOLE_PUNCH},
                                            {FEAT_FINISHING_3_HOLE_PUNCH, VAL_FINISHING_3_HOLE_PUNCH},
                                            {FEAT_FINISHING_2_HOLE_PUNCH, VAL_FINISHING_2_HOLE_PUNCH}}) {
        m_job.Choose(feature, left);
        EXPECT_EQ(ofJob(), finishings(none, true, holes, left)) << holes;
    }
    m_job.Choose(FEAT_FINISHING_HOLE_PUNCH, VAL_FINISHING_4_HOLE_PUNCH);
    EXPECT_EQ(ofJob(), finishings(none, true, VAL_FINISHING_4_HOLE_PUNCH, none));
    EXPECT_NE(ofJob(), finishings(none, true, VAL_FINISHING_2_HOLE_PUNCH, none));

    m_job = {};
    for (const auto& [feature, place] :
         Rows<tagFeatureEnum, tagValueEnum>{{FEAT_FINISHING_CENTER_STAPLE, VAL_FINISHING_CENTER_STAPLES_TOP},
                                            {FEAT_FINISHING_4_STAPLES, VAL_FINISHING_1_STAPLE_TOP_RIGHT},
                                            {FEAT_FINISHING_2_STAPLES, VAL_FINISHING_2_STAPLES_LEFT},
                                            {FEAT_FINISHING_1_STAPLE, VAL_FINISHING_1_STAPLE_TOP_LEFT}}) {
        m_job.Choose(feature, place);
        EXPECT_EQ(ofJob(), finishings(place, true, none, none)) << feature;
    }
    m_job.Choose(FEAT_FINISHING_STAPLE, VAL_FINISHING_2_STAPLES);
    EXPECT_EQ(ofJob(), finishings(VAL_FINISHING_2_STAPLES, false, none, none));
}

TEST(PrintInstructionGenerator, GuessesTheApplicationFromTheDocumentsName) {
    for (const auto& [name, expected] :
         Rows<const wchar_t*, const wchar_t*>{{L"Microsoft Word - a - Notepad", L"winword"},
                                              {L"a - Notepad", L"notepad"},
                                              {L"b.xlsx", L"excel"},
                                              {L"b.xls", L"excel"},
                                              {L"b.XLSX", nullptr},
                                              {L"my Microsoft Word - a", nullptr}}) {
        CXString creator;
        EXPECT_EQ(Generator::GuessCreatorNamePdlFromDocumentName(name, creator), expected != nullptr) << name;
        EXPECT_EQ(creator, expected == nullptr ? L"unknown-application" : expected) << name;
    }
}

} // namespace
