#include "Platform/Spooler/SampleQueue.h"
#include "Support/EnvironmentVariable.h"
#include "Support/Rows.h"
#include "Support/TemporaryFolder.h"

#include <Spooler/QueueFolder.h>
#include <Spooler/QueueFolderWriter.h>
#include <Spooler/QueueRegistry.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OvPlatform;
using testing::HasSubstr;

namespace {

std::string Problem(const std::filesystem::path& folder) {
    try {
        QueueFolder::Load(folder);
        return "no problem";
    } catch (const QueueFolderError& error) {
        return error.what();
    }
}

const std::string head = R"(<Queue version="1"><Printer name="P" port="FILE:" driver="D"/>)"
                         R"(<DefaultTicket file="t.xml"/><Capabilities file="c.xml"/>)";

// A folder whose description is the given text.
void MakeFolder(const TemporaryFolder& folder, const std::string& description) {
    folder.Write("queue.xml", description);
    folder.Write("t.xml", "<t/>");
    folder.Write("c.xml", "<c/>");
    folder.Write("empty.xml", "");
}

} // namespace

TEST(QueueFolder, ReadsBackWhatWasWritten) {
    const TemporaryFolder folder;
    QueueDescription queue = SampleQueue();
    queue.devmode.assign(220, 3);
    queue.jobs[1].devmode.assign(221, 5);
    WriteQueueFolder(queue, folder / "deep/queue");
    EXPECT_EQ(QueueFolder::Load(folder / "deep/queue")->Description(), queue);
}

TEST(QueueFolder, ReadsTypedPropertiesAndFiles) {
    const TemporaryFolder folder;
    MakeFolder(folder, head + R"(<!-- a note --><DriverProperties><String name="File" file="text.txt"/>
        <String name="Inline"> x <![CDATA[<y/>]]></String><Bool name="One"> 1 </Bool>
        <Int32 name="Hex">0x7FFFFFFF</Int32><Stream name="Flow" file="sub/data.bin"/></DriverProperties></Queue>)");
    EXPECT_THAT(Problem(folder.Path()), HasSubstr("text.txt: the file is missing"));
    folder.Write("text.txt", "\xEF\xBB\xBF\xF0\x9F\x96\xA8");
    folder.Write("sub/data.bin", std::string("\0\1", 2));
    const QueueValues expected = {{L"File", std::wstring(L"\xD83D\xDDA8")},
                                  {L"Inline", std::wstring(L" x <y/>")},
                                  {L"One", true},
                                  {L"Hex", std::int32_t{0x7FFFFFFF}},
                                  {L"Flow", QueueStream{{0, 1}}}};
    EXPECT_EQ(QueueFolder::Load(folder.Path())->DriverProperties(), expected);
}

TEST(QueueFolder, SaysWhatIsWrongWithAFolder) {
    const Rows<std::string, std::string> rows{
        {"", "queue.xml: the document is empty"},
        {"<Queue version='1'>", "queue.xml:1: "},
        {"<Printer/>", "<Printer>, not <Queue>"},
        {"<Queue xmlns='urn:x' version='1'/>", "not <Queue>"},
        {"<Queue version='2'/>", "version '2' is not known"},
        {"<!DOCTYPE Queue [<!ENTITY e 'x'>]><Queue version='1'/>", "document type declaration"},
        {"<Queue version='1'><Printer name='P' port='FILE:' driver='D'/></Queue>",
         "<DefaultTicket> is missing"},
        {head + "<Printer name='Q' port='x' driver='D'/></Queue>", "<Printer> stands twice"},
        {head + "<Colour/></Queue>", "unknown element <Colour>"},
        {head + "<Jobs>\n<Job id='1' document='d' user='u' pagse='3'/></Jobs></Queue>",
         ":2: unknown attribute 'pagse'"},
        {head + "<Jobs><Job id='0' document='d' user='u'/></Jobs></Queue>",
         "'0' is no value for the attribute 'id'"},
        {head + "<Jobs><Job id='4294967296' document='d' user='u'/></Jobs></Queue>",
         "no value for the attribute 'id'"},
        {head + "<Jobs><Job id='1' document='d' user='u'/><Job id='1' document='d' user='u'/></Jobs></Queue>",
         "two jobs have the id 1"},
        {head + "<Jobs><Job id='1' document='d' user='u' submitted='2026-02-29T00:00:00Z'/></Jobs></Queue>",
         "is no time"},
        {head + "<Devmode file='../t.xml'/></Queue>", "is not in the folder"},
        {head + "<Devmode file='/etc/passwd'/></Queue>", "is not in the folder"},
        {head + "<Devmode file='.'/></Queue>", "this is not a file"},
        {head + "<Devmode file='empty.xml'/></Queue>", "empty.xml: the file is empty"},
        {head + "loose text</Queue>", "unexpected text in <Queue>"},
        {head + "<DriverProperties><Bool name='b'>yes</Bool></DriverProperties></Queue>",
         "'yes' is neither true nor false"},
        {head + "<DriverProperties><Int32 name='i'>2147483648</Int32></DriverProperties></Queue>",
         "no 32-bit integer"},
        {head + "<DriverProperties><Bytes name='x'>AA=A</Bytes></DriverProperties></Queue>", "is not base64"},
        {head + "<DriverProperties><Bytes name='x'>AAA</Bytes></DriverProperties></Queue>", "is not base64"},
        {head + "<DriverProperties><Bytes name='x' file='t.xml'>AAAA</Bytes></DriverProperties></Queue>",
         "has content too"},
        {head + "<QueueProperties><Bool name='x'>1</Bool><Bytes name='x'/></QueueProperties></Queue>",
         "'x' stands twice"},
        {head + "<QueueProperties><Double name='x'>1</Double></QueueProperties></Queue>",
         "unknown element <Double>"},
    };
    const TemporaryFolder folder;
    EXPECT_THAT(Problem(folder / "nowhere"), HasSubstr("queue.xml: the file is missing"));
    // As one that this user may not look into, which root may.
    std::filesystem::create_symlink("circle", folder / "circle");
    EXPECT_THAT(Problem(folder / "circle"), HasSubstr("queue.xml: the file cannot be read: Too many levels"));
    for (const auto& [description, wantedProblem] : rows) {
        MakeFolder(folder, description);
        const std::string problem = Problem(folder.Path());
        EXPECT_THAT(problem, HasSubstr(wantedProblem)) << description;
        EXPECT_EQ(problem.find('\n'), std::string::npos) << "one line: " << problem;
    }
}

TEST(QueueFolder, AddsAJobWithoutChangingTheOriginal) {
    const QueueFolder queue(SampleQueue());
    QueueJob job;
    job.id = 41;
    job.document = L"new";
    const auto altered = queue.WithJob(job);
    EXPECT_EQ(altered->Jobs().size(), 2u);
    EXPECT_EQ(altered->Jobs().back().document, L"new");
    EXPECT_NE(queue.FindJob(41)->document, L"new");
    EXPECT_EQ(queue.FindJob(8), nullptr);
}

TEST(QueueRegistry, FindsByNameWithoutRegardToCaseAndBySearching) {
    QueueRegistry::Clear();
    const TemporaryFolder folder;
    QueueDescription queue = SampleQueue();
    queue.printerName = L"\x00C4rger"; // Ä
    WriteQueueFolder(queue, folder / "b");
    folder.Write("a/queue.xml", "<damaged");
    EXPECT_EQ(QueueRegistry::Find(L"\x00E4RGER"), nullptr);
    EXPECT_EQ(QueueRegistry::Find(nullptr), nullptr);
    const auto found = [&] {
        const EnvironmentVariable search(QueueRegistry::searchVariable, "/nowhere:" + folder.Path().string());
        return QueueRegistry::Find(L"\x00E4RGER");
    }();
    ASSERT_NE(found, nullptr) << "a damaged folder must hide no other";
    EXPECT_EQ(QueueRegistry::Find(L"\x00C4rger"), found) << "kept once found";

    const auto other = std::make_shared<QueueFolder>(queue);
    QueueRegistry::Add(other);
    EXPECT_EQ(QueueRegistry::Find(L"\x00C4rger"), other);
    QueueRegistry::Clear();
    EXPECT_EQ(QueueRegistry::Find(L"\x00C4rger"), nullptr);
}
