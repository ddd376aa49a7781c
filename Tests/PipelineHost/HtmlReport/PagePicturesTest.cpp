#include "Support/EnvironmentVariable.h"
#include "Support/SampleJob.h"
#include "Support/TemporaryFolder.h"

#include <Common/ProgramPath.h>
#include <HtmlReport/PagePictures.h>
#include <HtmlReport/RendererProcess.h>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

using namespace OvPipeline;
using testing::HasSubstr;

namespace {

constexpr const char* png = "\\211PNG\\r\\n\\032\\n"; // for printf

/// Programs of the test's own, and no others but the system's.
class PagePicturesTest : public testing::Test {
protected:
    void Program(const std::string& name, const std::string& script) {
        const auto file = m_folder.Write(name, "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }

    TemporaryFolder m_folder;
    const EnvironmentVariable m_path{"PATH", m_folder.Path().string()};
};

std::vector<bool> Drawn(const DrawnPages& pages) {
    std::vector<bool> drawn;
    for (const std::string& picture : pages.pictures)
        drawn.push_back(!picture.empty());
    return drawn;
}

} // namespace

TEST_F(PagePicturesTest, ProgramThatFailsLeavesARemarkInPlaceOfItsPicture) {
    const auto job = m_folder.Write("a job", "");
    const PagePictures pictures;
    EXPECT_THAT(pictures.OfPackage(job, {1}).remark, HasSubstr("neither mutool nor xpstopng"));
    EXPECT_THAT(pictures.OfPackage(job, {1}).pictures, testing::IsEmpty());

    Program("mutool", std::string("printf '") + png +
                          "' > page-2.png; echo no picture > page-3.png; "
                          "/bin/ln -s /etc/passwd page-4.png; /bin/cp page-2.png page-5.png; "
                          "/usr/bin/truncate -s 9M page-5.png; exit 3");
    const DrawnPages drawn = pictures.OfPackage(job, {2, 3, 4, 5, 7});
    EXPECT_EQ((std::vector<bool>{true, false, false, false, false}), Drawn(drawn));
    EXPECT_EQ("1 page drawn by MuPDF, then it ended with code 3", drawn.remark);
    Program("mutool", "exit 0"); // what the one before has left is not its work
    EXPECT_EQ("0 pages drawn by MuPDF", pictures.OfPackage(job, {2}).remark);

    // What comes by a stream has its name in this process alone.
    Program("mutool", "/bin/cat job.xps > " + (m_folder / "seen").string());
    const int stream = open(m_folder.Write("streamed", "the job").c_str(), O_RDONLY | O_CLOEXEC);
    EXPECT_EQ("0 pages drawn by MuPDF",
              pictures.OfPackage("/proc/self/fd/" + std::to_string(stream), {1}).remark);
    close(stream);
    EXPECT_EQ("the job", TemporaryFolder::Read(m_folder / "seen"));

    Program("mutool", "kill -9 $$");
    EXPECT_THAT(pictures.OfPackage(job, {1}).remark, HasSubstr("ended by a signal"));
}

// It draws those from -f to -l of the document -d, but never the first of the second, as printf's %0*d names
// them.
TEST_F(PagePicturesTest, ProgramThatDrawsOneDocumentAtATimeDrawsThemAll) {
    Program("xpstopng", std::string("for page in $(/usr/bin/seq -f %02.0f $6 $8); do\n") +
                            "test $4$page = 201 || printf '" + png + " %s %s' $4 $page > ${10}-$page.png\n" +
                            "done; test $4 != 2 || exit 2");
    SampleJob job;
    job.documents = 3;
    job.pages = 12;
    job.Write(m_folder / "job.xps");
    const DrawnPages drawn = PagePictures().OfPackage(m_folder / "job.xps", {2, 12, 13, 23, 36});
    std::vector<std::string> names;
    for (const std::string& picture : drawn.pictures)
        names.push_back(picture.substr(std::min<std::size_t>(8, picture.size())));
    EXPECT_THAT(names, testing::ElementsAre(" 1 02", " 1 12", "", " 2 11", " 3 12"));
    EXPECT_EQ("4 pages drawn by libgxps, then it ended with code 2", drawn.remark);
}

TEST_F(PagePicturesTest, StreamIsCutFreeOfItsPjl) {
    Program("gs", std::string("/bin/cp pages.ps ") + m_folder.Path().string() + "; printf '" + png +
                      "' > sheet-1.png; /bin/cp sheet-1.png sheet-2.png");
    const PagePictures pictures;
    const auto stream = m_folder.Write("stream", "\x1b%-12345X@PJL SET A=1\n%!PS-Adobe-3.0\nshowpage\n"
                                                 "\x1b%-12345X@PJL EOJ\nnothing\n");
    EXPECT_EQ((std::vector<bool>{true, true}), Drawn(pictures.OfStream(stream)));
    EXPECT_EQ("%!PS-Adobe-3.0\nshowpage\n", TemporaryFolder::Read(m_folder / "pages.ps"));
    EXPECT_THAT(pictures.OfStream(m_folder.Write("other", "\x1b) HP-PCL XL;\n")).remark,
                HasSubstr("no PostScript"));
}

TEST_F(PagePicturesTest, ProcessInheritsNothingAndDoesNotStayForEver) {
    const int open = dup(STDERR_FILENO); // which a child would have
    Program("list", "/bin/ls /proc/self/fd > list.txt; echo heard; echo $TMPDIR > where.txt; "
                    "echo $(ulimit -f) $(ulimit -v) $(ulimit -c) > bounds.txt");
    EXPECT_EQ("", RendererProcess::Run(ProgramPath("list"), {}, m_folder.Path(), 10));
    close(open);
    // The three streams, and the folder that is listed.
    EXPECT_EQ("0\n1\n2\n3\n", TemporaryFolder::Read(m_folder / "list.txt"));
    EXPECT_EQ("2097152 4194304 0\n", TemporaryFolder::Read(m_folder / "bounds.txt")); // 1 GB, 4 GB, none
    EXPECT_EQ(m_folder.Path().string() + "\n", TemporaryFolder::Read(m_folder / "where.txt"));
    Program("leaver", "/bin/sleep 60 & echo $! > left.txt");
    EXPECT_EQ("", RendererProcess::Run(ProgramPath("leaver"), {}, m_folder.Path(), 10));
    std::string left = TemporaryFolder::Read(m_folder / "left.txt");
    left.pop_back();
    const auto isRunning = [state = "/proc/" + left + "/stat"] {
        return std::filesystem::exists(state) &&
               TemporaryFolder::Read(state).find(") Z ") == std::string::npos;
    };
    for (int wait = 0; wait < 1000 && isRunning(); ++wait)
        usleep(10000);
    EXPECT_FALSE(isRunning());
    Program("slow", "exec /bin/sleep 60");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ("it took too long", RendererProcess::Run(ProgramPath("slow"), {}, m_folder.Path(), 0.05));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_TRUE(ProgramPath("there-is-none").empty());
}

TEST_F(PagePicturesTest, FolderGoesAwayHoweverTheProgramEnds) {
    const EnvironmentVariable temporary("TMPDIR", m_folder.Path().string());
    {
        const ScratchFolder folder("pictures");
        std::ofstream(folder.Path() / "file") << "text";
        EXPECT_EQ(1u, m_folder.Names().size());
    }
    EXPECT_THAT(m_folder.Names(), testing::IsEmpty());

    const pid_t child = fork();
    if (child == 0) {
        setpgid(0, 0);
        const ScratchFolder folder("pictures");
        std::ofstream(folder.Path() / "file") << "text";
        kill(0, SIGKILL); // as a terminal ends all that it knows of
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(child, waitpid(child, &status, 0));
    EXPECT_TRUE(WIFSIGNALED(status));
    for (int wait = 0; wait < 1000 && !m_folder.Names().empty(); ++wait)
        usleep(10000);
    EXPECT_THAT(m_folder.Names(), testing::IsEmpty());
}
