#include "PrintServer/SampleQueues.h"
#include "Support/InApartment.h"
#include "Support/Rows.h"
#include "Support/TemporaryFolder.h"

#include <Ppd/PpdText.h>
#include <Ppd/QueuePpd.h>
#include <cups/ppd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace OvPrintServer;
using testing::HasSubstr;

namespace {

class PpdTest : public InApartment<> {
protected:
    using Ppd = std::unique_ptr<ppd_file_t, decltype(&ppdClose)>;

    static Ppd Open(const std::filesystem::path& file) { return {ppdOpenFile(file.c_str()), &ppdClose}; }
    Ppd Write(const QueueOffer& offer) {
        return Open(m_folder.Write("queue.ppd", PpdText(offer, {"/queues/one", "/queues/pipeline.xml"})));
    }

    TemporaryFolder m_folder;
};

std::string DefaultOf(ppd_file_t* ppd, const char* keyword) {
    const ppd_option_t* const option = ppdFindOption(ppd, keyword);
    return option == nullptr ? "" : option->defchoice;
}

TEST_F(PpdTest, SaysWhatThePrinterHasAndTheQueueChooses) {
    const QueueOffer color(SampleQueue("ColorOffice"));
    const Ppd ppd = Write(color);
    ASSERT_TRUE(ppd);
    for (const auto& [keyword, choice] : Rows<const char*, const char*>{{"PageSize", "A4"},
                                                                        {"InputSlot", "AutoSelect"},
                                                                        {"MediaType", "Plain"},
                                                                        {"Duplex", "None"},
                                                                        {"ColorModel", "RGB"},
                                                                        {"Resolution", "600dpi"},
                                                                        {"Stapling", "None"},
                                                                        {"Punch", "None"}})
        EXPECT_EQ(choice, DefaultOf(ppd.get(), keyword)) << keyword;
    EXPECT_EQ(1, ppd->color_device);
    EXPECT_EQ(1, ppd->variable_sizes);
    EXPECT_STREQ("9999", ppdFindAttr(ppd.get(), "cupsMaxCopies", nullptr)->value);
    EXPECT_STREQ("3401.57", ppdFindAttr(ppd.get(), "MaxMediaHeight", nullptr)->value);
    const std::string text = TemporaryFolder::Read(m_folder / "queue.ppd");
    EXPECT_THAT(text, HasSubstr("\n*cupsIPPFinishings 20/staple-top-left: \"*Stapling StapleTopLeft\"\n"));
    EXPECT_THAT(text, HasSubstr("\n*cupsIPPFinishings 74/punch-dual-left: \"*Punch HolePunchDualLeft\"\n"));
    EXPECT_NEAR(330200 * 72 / 25400.0, ppd->custom_max[0], 0.01);
    EXPECT_NEAR(1200000 * 72 / 25400.0, ppd->custom_max[1], 0.01);
    EXPECT_STREQ("**********", ppdFindAttr(ppd.get(), "cupsJobPassword", nullptr)->value);
    const ppd_size_t* const paper = ppdPageSize(ppd.get(), "A4");
    const double margin = 4200 * 72 / 25400.0;
    for (const double blank :
         {paper->left, paper->bottom, paper->width - paper->right, paper->length - paper->top})
        EXPECT_NEAR(margin, blank, 0.011);
    const QueuePpd read = QueuePpd::Read(m_folder / "queue.ppd");
    EXPECT_EQ("/queues/one", read.queue);
    EXPECT_EQ("/queues/pipeline.xml", read.pipeline);

    const QueueOffer mono(SampleQueue("MonoOffice"));
    const Ppd other = Write(mono);
    ASSERT_TRUE(other);
    EXPECT_EQ(0, other->color_device);
    EXPECT_EQ(nullptr, ppdFindOption(other.get(), "Stapling")); // which it does not have
}

// Each choice that a client sees comes back as the setting that it was made of.
TEST_F(PpdTest, EveryChoiceIsASettingOfTheTicket) {
    for (const char* const name : {"ColorOffice", "MonoOffice"}) {
        const QueueOffer offer(SampleQueue(name));
        const Ppd ppd = Write(offer);
        ASSERT_TRUE(ppd);
        int choices = 0;
        for (ppd_option_t* option = ppdFirstOption(ppd.get()); option != nullptr;
             option = ppdNextOption(ppd.get())) {
            std::set<std::string> values;
            for (int i = 0; i < option->num_choices; ++i) {
                const std::string choice = option->choices[i].choice;
                if (choice == "Custom") continue;
                const JobTicket ticket = TicketOf(offer, std::string(option->keyword) + "=" + choice);
                EXPECT_TRUE(ticket.left.empty()) << option->keyword << " " << choice;
                ASSERT_EQ(1U, ticket.asked.size()) << option->keyword << " " << choice;
                EXPECT_TRUE(values.insert(ticket.asked[0].value).second)
                    << "two choices are " << ticket.asked[0].value;
                ++choices;
            }
        }
        EXPECT_LT(30, choices);
    }
}

TEST_F(PpdTest, SaysWhatExcludesEachOther) {
    const QueueOffer offer(SampleQueue("ColorOffice"));
    const Ppd ppd = Write(offer);
    ASSERT_TRUE(ppd);
    ppdMarkDefaults(ppd.get());
    EXPECT_EQ(0, ppdConflicts(ppd.get()));
    EXPECT_EQ(0, ppdMarkOption(ppd.get(), "MediaType", "Transparency"));
    EXPECT_NE(0, ppdMarkOption(ppd.get(), "Duplex", "DuplexTumble"));
    EXPECT_EQ(0, ppdMarkOption(ppd.get(), "MediaType", "Plain"));
    EXPECT_NE(0, ppdMarkOption(ppd.get(), "PageSize", "Env10"));
}

TEST_F(PpdTest, APpdThatLeadsNowhereIsToldInOneLine) {
    const QueueOffer offer(SampleQueue("MonoOffice"));
    const std::string good = PpdText(offer, {"/queues/one", {}});
    const auto without = [&](const std::string& line) {
        std::string text = good;
        const std::size_t at = text.find(line);
        return text.erase(at, text.find('\n', at) - at + 1);
    };
    std::string relative = good;
    relative.replace(relative.find("/queues/one"), 11, "queues/one");
    for (const auto& [text, words] :
         Rows<std::string, const char*>{{without("*ovQueue"), "*ovQueue is missing"},
                                        {relative, "no absolute path"},
                                        {"no PPD\n", "cannot be read"},
                                        {good.substr(0, 20), "*ovQueue is missing"},
                                        {"", "cannot be read"},
                                        {std::string(1000, '\0'), "cannot be read"}})
        try {
            QueuePpd::Read(m_folder.Write("bad.ppd", text));
            ADD_FAILURE() << words;
        } catch (const PpdError& error) {
            EXPECT_THAT(error.what(), HasSubstr(words));
            EXPECT_EQ(std::string::npos, std::string(error.what()).find('\n'));
        }
    EXPECT_THROW(QueuePpd::Read(m_folder / "none.ppd"), PpdError);
    for (const char* const path : {"/queues/\"one", "/queues/one\n*cupsFilter: \"x\""})
        EXPECT_THROW(PpdText(offer, {path, {}}), std::invalid_argument);
}

// Of more than 255 bytes a line is, and its PPD nothing that a server reads.
TEST_F(PpdTest, NoLineIsTooLongForReaders) {
    auto description = SampleQueue("ColorOffice")->Description();
    std::string& capabilities = description.capabilities;
    const std::size_t most = capabilities.find(
        "psf:MaxLength", capabilities.find("<psf:ParameterDef name=\"pskv11:JobPasscodeString\""));
    capabilities.replace(capabilities.find(">10<", most), 4, ">10000<");
    const QueueOffer offer(std::make_shared<OvPlatform::QueueFolder>(description));
    const std::string path = "/" + std::string(242, 'q');
    const std::string text = PpdText(offer, {path, {}});
    const Ppd ppd = Open(m_folder.Write("queue.ppd", text));
    ASSERT_TRUE(ppd);
    EXPECT_EQ(path, QueuePpd::Read(m_folder / "queue.ppd").queue);
    EXPECT_EQ(235u, std::string(ppdFindAttr(ppd.get(), "cupsJobPassword", nullptr)->value).size());
    EXPECT_THROW(PpdText(offer, {path + "q", {}}), std::invalid_argument);
    EXPECT_THROW(PpdText(offer, {"/queues/one", path}), std::invalid_argument);
}

// Two papers of one size are one, what is ruled out for every ticket is no choice, and one choice is none.
TEST_F(PpdTest, LeavesOutWhatNobodyCanChoose) {
    auto description = SampleQueue("ColorOffice")->Description();
    std::string& text = description.capabilities;
    const auto replace = [&](const std::string& before, const std::string& after) {
        for (std::size_t at = 0; (at = text.find(before, at)) != std::string::npos; at += after.size())
            text.replace(at, before.size(), after);
    };
    const std::size_t a5 = text.find("psk:ISOA5");
    text.replace(text.find(">148000<", a5), 8, ">210000<");
    text.replace(text.find(">210000<", text.find("MediaSizeHeight", a5)), 8, ">297000<");
    replace("psk:Letterhead\" constrained=\"psk:None",
            "psk:Letterhead\" constrained=\"psk:PrintTicketSettings");
    for (const char* const holes : {"Dual", "Quad"})
        for (const char* const edge : {"Left", "Top", "Right", "Bottom"})
            replace(std::string("psk:HolePunch") + holes + edge + "\" constrained=\"psk:None",
                    std::string("psk:HolePunch") + holes + edge + "\" constrained=\"psk:PrintTicketSettings");
    // A name that a PPD would cut, a rule about one feature alone, and a default that is not the first.
    replace("stationery-recycled", "stationery-that-has-been-used-once-before-and-not-more");
    text.insert(text.find("<qc:Constraint>"), "<qc:Constraint><qc:Choice feature=\"psk:PageMediaType\" "
                                              "options=\"psk:Plain\"/></qc:Constraint>");
    std::string& ticket = description.defaultTicket;
    ticket.replace(ticket.find("psk:ISOA4"), 9, "psk:NorthAmericaLetter");
    const QueueOffer offer(std::make_shared<OvPlatform::QueueFolder>(description));
    const Ppd ppd = Write(offer);
    ASSERT_TRUE(ppd);
    EXPECT_EQ("Letter", DefaultOf(ppd.get(), "PageSize"));
    ppd_option_t* const types = ppdFindOption(ppd.get(), "MediaType");
    EXPECT_TRUE(
        std::none_of(types->choices, types->choices + types->num_choices, [](const ppd_choice_t& choice) {
            return std::string(choice.choice).starts_with("stationery-that");
        }));
    ppd_option_t* const sizes = ppdFindOption(ppd.get(), "PageSize");
    EXPECT_EQ(1,
              std::count_if(sizes->choices, sizes->choices + sizes->num_choices,
                            [](const ppd_choice_t& choice) { return std::string(choice.choice) == "A4"; }));
    EXPECT_EQ(nullptr, ppdFindChoice(types, "Letterhead"));
    EXPECT_NE(nullptr, ppdFindChoice(types, "Plain"));
    EXPECT_EQ(nullptr, ppdFindOption(ppd.get(), "Punch"));
}

// What stands in a queue's documents stays where it stands.
TEST_F(PpdTest, NamesOfTheQueueEndNoLine) {
    auto description = SampleQueue("ColorOffice")->Description();
    const std::string name = ">Recycled<";
    description.capabilities.replace(description.capabilities.find(name), name.size(),
                                     ">Re&#10;*cupsFilter2: \"a/b c/d 0 sh\"/:\u00e9\u65e5<");
    const std::string plain = ">Bond<"; // 79 bytes, and a character of two
    description.capabilities.replace(description.capabilities.find(plain), plain.size(),
                                     ">" + std::string(79, 'x') + "\u00e9<");
    description.driverProperties[L"ProductName"] = std::wstring(L"A (fast)\n*One");
    const QueueOffer offer(std::make_shared<OvPlatform::QueueFolder>(description));
    const Ppd ppd = Write(offer);
    ASSERT_TRUE(ppd);
    const std::string text = TemporaryFolder::Read(m_folder / "queue.ppd");
    EXPECT_THAT(text, HasSubstr("stationery-recycled/Re *cupsFilter2   a b c d 0 sh   \u00e9\u65e5: \"\""));
    EXPECT_THAT(text, HasSubstr("/" + std::string(79, 'x') + ": \"\""));
    EXPECT_THAT(text, HasSubstr("*Product: \"(A  fast  *One)\""));
}

} // namespace
