// The filter in a process of its own, as a print server runs it.
#include "Support/SampleJob.h"

#include <Common/ProgramPath.h>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

const std::string colorQueue = OV_SOURCE_DIR "/Samples/Queues/ColorOffice";

class FilterProgramTest : public testing::Test {
protected:
    FilterProgramTest() {
        WriteJob(2);
        m_folder.Write("job.pdf", "%PDF-1.4 of nobody's");
        std::filesystem::create_directory(m_folder / "tm%p");
        std::filesystem::create_directory(m_folder / "programs");
    }
    ~FilterProgramTest() override { Finish(); }

    // Pages that a renderer takes.
    void WriteJob(int pages) const {
        SampleJob job;
        job.pages = pages;
        ZipItems items = job.Items();
        for (int page = 1; page <= pages; ++page)
            items[SampleJob::PageName(1, page).substr(1)] =
                "<FixedPage xmlns=\"" + job.Base() + "\" xml:lang=\"en\" Width=\"794\" Height=\"1123\">" +
                "<Path Fill=\"#FF3366CC\" Data=\"M 60,300 L 300,300 300,420 60,420 z\"/></FixedPage>";
        WriteZip(m_folder / "job.xps", items);
    }

    // What the converter is: a script.
    void PutConverter(const std::string& script) {
        std::filesystem::permissions(m_folder.Write("programs/gs", "#!/bin/sh\n" + script),
                                     std::filesystem::perms::owner_all);
    }

    // With standard output on a pipe, and files open where the server has its channels.
    void Start(const std::string& file, const std::string& options = "",
               const std::string& queue = colorQueue) {
        int ends[2] = {-1, -1};
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        m_output = ends[0];
        const std::vector<std::string> environment{"OV_QUEUE=" + queue,
                                                   "TMPDIR=" + (m_folder / "tm%p").string(),
                                                   "PATH=" + (m_folder / "programs").string() + m_path,
                                                   "OUT=" + m_folder.Path().string(),
                                                   "OV_PIPELINE=" + m_pipeline,
                                                   "GS_OPTIONS=-dSAFER"};
        std::vector<std::string> arguments{"ovtoprinter", "7", m_title, m_title, m_copies, options};
        if (!file.empty()) arguments.push_back((m_folder / file).string());
        std::vector<char*> environmentList = List(environment);
        std::vector<char*> argumentList = List(arguments);
        m_process = fork();
        if (m_process == 0) {
            dup2(ends[1], STDOUT_FILENO);
            dup2(open((m_folder / "said").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600),
                 STDERR_FILENO);
            const int channel = open((m_folder / "channel").c_str(), O_RDWR | O_CREAT, 0600);
            dup2(channel, 3);
            dup2(channel, 4);
            execve(OV_BINARY_DIR "/bin/ovtoprinter", argumentList.data(), environmentList.data());
            _exit(127);
        }
        close(ends[1]);
    }

    // The exit code, or -1 where a signal ended it. The output is read before.
    int Finish() {
        if (m_process <= 0) return -1;
        char chunk[65536];
        for (ssize_t size = 0; m_output >= 0 && (size = read(m_output, chunk, sizeof chunk)) > 0;)
            m_stream.append(chunk, static_cast<std::size_t>(size));
        CloseOutput();
        int status = 0;
        waitpid(m_process, &status, 0);
        m_process = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    void CloseOutput() {
        if (m_output >= 0) close(m_output);
        m_output = -1;
    }

    std::string Said() const { return TemporaryFolder::Read(m_folder / "said"); }
    long LinesOf(const std::string& word) const {
        const std::string said = "\n" + Said();
        long count = 0;
        for (std::size_t at = 0; (at = said.find("\n" + word, at)) != std::string::npos; ++at)
            ++count;
        return count;
    }
    bool WaitFor(const std::string& name) const {
        for (int i = 0; i < 200 && !std::filesystem::exists(m_folder / name); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return std::filesystem::exists(m_folder / name);
    }
    // The process of which a converter wrote the number.
    bool IsGone(const std::string& name) const {
        const pid_t process = std::stoi(TemporaryFolder::Read(m_folder / name));
        const std::filesystem::path state = "/proc/" + std::to_string(process) + "/stat";
        for (int i = 0; i < 200 && std::filesystem::exists(state); ++i) {
            if (TemporaryFolder::Read(state).find(") Z ") != std::string::npos) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return !std::filesystem::exists(state);
    }
    void ExpectNothingLeft() const {
        EXPECT_TRUE(std::filesystem::is_empty(m_folder / "tm%p"));
        EXPECT_EQ("", TemporaryFolder::Read(m_folder / "channel"));
    }

    TemporaryFolder m_folder;
    std::string m_path = ":/usr/bin:/bin";
    std::string m_pipeline;
    std::string m_title = "anna";
    std::string m_copies = "1";
    pid_t m_process = -1;
    std::string m_stream;

private:
    static std::vector<char*> List(const std::vector<std::string>& texts) {
        std::vector<char*> list;
        list.reserve(texts.size() + 1);
        for (const std::string& text : texts)
            list.push_back(const_cast<char*>(text.c_str()));
        list.push_back(nullptr);
        return list;
    }

    int m_output = -1;
};

TEST_F(FilterProgramTest, AJobBecomesTheDevicesStreamAndNothingIsLeft) {
    Start("job.xps");
    EXPECT_EQ(0, Finish()) << Said();
    EXPECT_THAT(m_stream, HasSubstr("@PJL COMMENT OID_ATT_JOB_OWNER \"anna\""));
    EXPECT_EQ("PAGE: 1 1\nPAGE: 2 1\nATTR: job-media-progress=100\n", Said());
    ExpectNothingLeft();
}

TEST_F(FilterProgramTest, NoTitleGetsIntoTheCommands) {
    std::string controls;
    for (int c = 1; c < 256; ++c)
        controls += static_cast<char>(c);
    const auto count = [&](const std::string& what) {
        long found = 0;
        for (std::size_t at = 0; (at = m_stream.find(what, at)) != std::string::npos; ++at)
            ++found;
        return found;
    };
    const auto shape = [&] {
        return std::tuple{count("\x1b"), count("\n@PJL"), count("\n%%Page:"), count("\nshowpage"),
                          count("\n%%EOF")};
    };
    Start("job.xps");
    ASSERT_EQ(0, Finish()) << Said();
    const auto plain = shape();
    for (const std::string& title : {controls, std::string("x\";\n@PJL SET COPIES=9\n\x1b%-12345X@PJL RESET"),
                                     std::string(") \nshowpage (\n%%EOF\n"),
                                     std::string("\u65e5\u672c \u05e2\u05d1 \u202e\U0001f5a8 \u2028ERROR: x"),
                                     std::string(30'000, '(')}) {
        m_title = title;
        m_stream.clear();
        Start("job.xps");
        EXPECT_EQ(0, Finish()) << Said();
        EXPECT_EQ(plain, shape()) << title.substr(0, 40);
        EXPECT_EQ(0, LinesOf("ERROR: ")) << Said();
    }
}

TEST_F(FilterProgramTest, WhatGoesWrongIsOneLine) {
    m_folder.Write("empty.xps", "");
    m_folder.Write("cut.xps", TemporaryFolder::Read(m_folder / "job.xps").substr(0, 900));
    for (const auto& [file, options, queue] :
         {std::tuple{"empty.xps", "", colorQueue.c_str()}, std::tuple{"cut.xps", "", colorQueue.c_str()},
          std::tuple{"none.xps", "", colorQueue.c_str()}, std::tuple{"job.xps", "", "/nowhere"},
          std::tuple{"job.xps", "job-password=1", colorQueue.c_str()},
          std::tuple{"job.xps", "page-ranges=90", colorQueue.c_str()},
          std::tuple{"job.xps", "finishings=20 job-mandatory-attributes=finishings", colorQueue.c_str()},
          std::tuple{"job.xps", "sides=x ipp-attribute-fidelity=true", colorQueue.c_str()},
          std::tuple{"job.xps", "folding=z job-mandatory-attributes=folding", colorQueue.c_str()}}) {
        Start(file, options, queue);
        EXPECT_EQ(1, Finish()) << file << options;
        EXPECT_EQ(1, LinesOf("ERROR: ")) << Said();
        EXPECT_EQ(1, std::ranges::count(Said(), '\n')) << Said();
        EXPECT_THAT(m_stream, IsEmpty()) << file;
        ExpectNothingLeft();
    }
}

// More copies than the printer makes are one, also in what is counted.
TEST_F(FilterProgramTest, WhatThePrinterOrItsQueueDoesOtherwiseIsSaid) {
    m_copies = "20000";
    Start("job.xps", "number-up=4 finishings=20,fold-z Stapling=StapleTopRight");
    EXPECT_EQ(0, Finish()) << Said();
    EXPECT_EQ(3, LinesOf("WARNING: ")) << Said();
    EXPECT_EQ(1, LinesOf("WARNING: finishings=20: devices of the family Kestrel get no command")) << Said();
    EXPECT_EQ(1, LinesOf("WARNING: copies=20000: ")) << Said();
    EXPECT_EQ(1, LinesOf("WARNING: number-up=4: ")) << Said();
    EXPECT_EQ(1, LinesOf("PAGE: 2 1\n")) << Said();
    Start("job.xps", "media=na_number-10_4.125x9.5in finishings=20"); // neither is had, for one reason
    EXPECT_EQ(0, Finish()) << Said();
    EXPECT_EQ(1, LinesOf("WARNING: finishings=20: ")) << Said();
    m_copies = "3";
    m_pipeline =
        OV_SOURCE_DIR "/Samples/Pipelines/pass-through.xml"; // which may know what to do about staples
    Start("job.xps", "finishings=20");
    EXPECT_EQ(0, Finish()) << Said();
    EXPECT_EQ(0, LinesOf("WARNING: ")) << Said();
    EXPECT_EQ(m_stream.substr(m_stream.size() - 22, 4), "PK\x05\x06");
    m_pipeline.clear();
    Start("job.xps");
    EXPECT_EQ(0, Finish()) << Said();
    EXPECT_EQ(1, LinesOf("PAGE: 2 3\n")) << Said();
}

TEST_F(FilterProgramTest, OfManyOptionsThatCannotBeHadSomeAreSaid) {
    std::string options = "media=";
    for (int i = 0; i < 20; ++i)
        options += "tray-9" + std::to_string(i) + ",";
    for (int i = 0; i < 10; ++i)
        options += " thing" + std::to_string(i) + "=1";
    Start("job.xps", options, OV_SOURCE_DIR "/Samples/Queues/MonoOffice");
    EXPECT_EQ(0, Finish()) << Said();
    EXPECT_EQ(12, LinesOf("WARNING: media=")) << Said();
    EXPECT_EQ(1, LinesOf("WARNING: 8 more options cannot be had\n")) << Said();
    EXPECT_THAT(Said(),
                HasSubstr("INFO: 10 options mean nothing to this printer: thing0, thing1, thing2, thing3, "
                          "thing4, thing5, thing6, thing7, ...\n"));
    // What the filters have got over is said as well.
    EXPECT_EQ(1, LinesOf("WARNING: the job asks for several pages on a sheet")) << Said();
}

TEST_F(FilterProgramTest, AReaderThatGoesAwayEndsTheJob) {
    Start("job.xps");
    CloseOutput();
    EXPECT_EQ(1, Finish());
    EXPECT_EQ(1, LinesOf("ERROR: ")) << Said();
    ExpectNothingLeft();
}

// Also one without a mark, which would bring the other sides of sheets into disorder.
TEST_F(FilterProgramTest, EveryPageOfAConvertedDocumentIsPrinted) {
    if (OvPipeline::ProgramPath("gs").empty()) GTEST_SKIP() << "no converter is installed";
    const std::string pdf =
        "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
        "2 0 obj<</Type/Pages/Count 3/Kids[3 0 R 4 0 R 3 0 R]/MediaBox[0 0 595 842]>>endobj\n"
        "3 0 obj<</Type/Page/Parent 2 0 R/Contents 5 0 R>>endobj\n"
        "4 0 obj<</Type/Page/Parent 2 0 R>>endobj\n"
        "5 0 obj<</Length 21>>stream\n100 100 200 200 re f \nendstream endobj\n"
        "trailer<</Root 1 0 R>>\n";
    m_folder.Write("job.pdf", pdf);
    Start("job.pdf");
    EXPECT_EQ(0, Finish()) << Said();
    EXPECT_EQ(3, LinesOf("PAGE: ")) << Said();
    ExpectNothingLeft();
}

TEST_F(FilterProgramTest, AConverterGetsItsFilesAndNothingElse) {
    // It tells what is open, and has something to say and no success.
    PutConverter("ls -1 /proc/self/fd >\"$OUT/open\"; readlink /proc/self/fd/0 >\"$OUT/input\"; echo "
                 "\"$TMPDIR\" >\"$OUT/where\"; touch \"$TMPDIR/rest\"\n"
                 "printf 'Error: /undefined\\nmore\\n' >&2; exit 1\n");
    const int before = dup(STDIN_FILENO);
    const int document = open((m_folder / "job.pdf").c_str(), O_RDONLY | O_CLOEXEC);
    dup2(document, STDIN_FILENO);
    Start("", "job-password=80731942");
    EXPECT_EQ(1, Finish());
    dup2(before, STDIN_FILENO);
    close(before);
    close(document);
    EXPECT_THAT(
        Said(),
        HasSubstr("ERROR: the PDF document cannot be made XPS: Ghostscript says Error: /undefined\n"));
    EXPECT_EQ("0\n1\n2\n3\n", TemporaryFolder::Read(m_folder / "open")); // the last is that of the listing
    EXPECT_EQ("/dev/null\n", TemporaryFolder::Read(m_folder / "input"));
    EXPECT_THAT(TemporaryFolder::Read(m_folder / "where"),
                HasSubstr((m_folder / "tm%p/ovtoprinter-").string()));
    EXPECT_THAT(Said(), Not(HasSubstr("80731942")));
    ExpectNothingLeft();
}

TEST_F(FilterProgramTest, AConvertedDocumentIsPrintedAndTheConverterNotMissedAnyMore) {
    // A percent sign in the name of its output stands there twice.
    PutConverter("for a; do case $a in -sOutputFile=*) o=${a#*=};; esac; done\n"
                 "cp \"$OUT/job.xps\" \"$(echo \"$o\" | sed s/%%/%/g)\"\n"
                 "case $o in *%%*) ;; *) exit 1;; esac; [ -z \"$GS_OPTIONS\" ]\n");
    Start("job.pdf", "page-ranges=2");
    EXPECT_EQ(0, Finish()) << Said();
    EXPECT_EQ("STATE: -cups-missing-filter-warning\nPAGE: 1 1\nATTR: job-media-progress=100\n", Said());
    EXPECT_THAT(m_stream, HasSubstr("%%Pages: 1\n"));
    ExpectNothingLeft();
    // One that has written and failed all the same.
    PutConverter(
        "for a; do case $a in -sOutputFile=*) cp \"$OUT/job.xps\" \"$(echo \"${a#*=}\" | sed s/%%/%/g)\";; "
        "esac; done; exit 3\n");
    m_stream.clear();
    Start("job.pdf");
    EXPECT_EQ(1, Finish()) << Said();
    EXPECT_THAT(m_stream, IsEmpty());
}

TEST_F(FilterProgramTest, ACancelledJobEndsItsConverterToo) {
    PutConverter("echo $$ >\"$TMPDIR/../../pid\"; exec sleep 60\n");
    Start("job.pdf", "sides=one-sided job-password ={80 1942}");
    ASSERT_TRUE(WaitFor("pid"));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const std::string shown = TemporaryFolder::Read("/proc/" + std::to_string(m_process) + "/cmdline");
    EXPECT_THAT(shown, HasSubstr("job-password*="));
    EXPECT_THAT(shown, Not(HasSubstr("1942"))); // the list of processes is everybody's
    const pid_t converter = std::stoi(TemporaryFolder::Read(m_folder / "pid"));
    kill(m_process, SIGTERM);
    EXPECT_EQ(0, Finish());
    EXPECT_EQ(-1, kill(converter, 0));
    EXPECT_EQ(0, LinesOf("ERROR: ")) << Said();
    EXPECT_EQ(1, LinesOf("INFO: the job is cancelled")) << Said();
    EXPECT_EQ(0, LinesOf("STATE: ")) << Said();
    ExpectNothingLeft();
}

// One that does not listen, and one that leaves another behind.
TEST_F(FilterProgramTest, NoConverterOutlivesItsJob) {
    PutConverter(
        "trap '' TERM; sleep 61 & echo $! >\"$OUT/second\"; echo $$ >\"$OUT/pid\"; while :; do wait; done\n");
    Start("job.pdf");
    ASSERT_TRUE(WaitFor("pid"));
    kill(m_process, SIGTERM);
    EXPECT_EQ(0, Finish()) << Said();
    EXPECT_TRUE(IsGone("pid"));
    EXPECT_TRUE(IsGone("second"));
    PutConverter("sleep 62 & echo $! >\"$OUT/second\"; exit 1\n");
    Start("job.pdf");
    EXPECT_EQ(1, Finish()) << Said();
    EXPECT_TRUE(IsGone("second"));
    ExpectNothingLeft();
    std::filesystem::remove(m_folder / "pid");
    PutConverter("echo text >\"$TMPDIR/file\"; echo $$ >\"$OUT/pid\"; exec sleep 63\n");
    Start("job.pdf");
    ASSERT_TRUE(WaitFor("pid"));
    kill(m_process, SIGKILL); // as a server does that has lost patience
    EXPECT_EQ(-1, Finish());
    EXPECT_TRUE(IsGone("pid"));
    for (int i = 0; i < 500 && !std::filesystem::is_empty(m_folder / "tm%p"); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ExpectNothingLeft();
}

TEST_F(FilterProgramTest, ACancelledJobDoesNotWaitForItsDocument) {
    ASSERT_EQ(0, mkfifo((m_folder / "nobody-writes").c_str(), 0600));
    int ends[2] = {-1, -1}; // of an input stream that says nothing
    ASSERT_EQ(0, pipe2(ends, O_CLOEXEC));
    const int before = dup(STDIN_FILENO);
    dup2(ends[0], STDIN_FILENO);
    for (const char* const file : {"nobody-writes", ""}) {
        Start(file);
        std::this_thread::sleep_for(std::chrono::milliseconds(500)); // it waits by now
        kill(m_process, SIGTERM);
        EXPECT_EQ(0, Finish());
        EXPECT_EQ("INFO: the job is cancelled\n", Said());
        ExpectNothingLeft();
    }
    dup2(before, STDIN_FILENO);
    for (const int end : {before, ends[0], ends[1]})
        close(end);
}

TEST_F(FilterProgramTest, ACancelledJobStopsWhereNobodyReads) {
    WriteJob(60);
    Start("job.xps");
    std::this_thread::sleep_for(std::chrono::milliseconds(800)); // the pipe is full by now
    int status = 0;
    ASSERT_EQ(0, waitpid(m_process, &status, WNOHANG)) << "the job does not wait for its reader";
    kill(m_process, SIGTERM);
    bool isEnded = false;
    for (int i = 0; i < 200 && !isEnded; ++i) {
        isEnded = waitpid(m_process, &status, WNOHANG) == m_process;
        if (!isEnded) std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    ASSERT_TRUE(isEnded);
    m_process = -1;
    CloseOutput();
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(0, LinesOf("ERROR: ")) << Said();
    const long done = LinesOf("PAGE: ");
    EXPECT_THAT(Said(), HasSubstr("ATTR: job-media-progress=" + std::to_string(100 * done / 60) + "\n"));
    ExpectNothingLeft();
}

TEST_F(FilterProgramTest, WithoutAConverterItSaysWhatToInstall) {
    m_path.clear();
    Start("job.pdf");
    EXPECT_EQ(1, Finish());
    EXPECT_THAT(Said(), HasSubstr("STATE: +cups-missing-filter-warning\nERROR: "));
    EXPECT_THAT(Said(), HasSubstr("install Ghostscript"));
}

} // namespace
