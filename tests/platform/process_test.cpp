// Libraries, windows, streams and the time limit.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <thread>
#include <vector>

#include "../folder.h"
#include "afxdllx.h"
#include "host/platform/callrecord.h"
#include "host/platform/files.h"
#include "host/platform/library.h"
#include "host/platform/lostfile.h"
#include "host/platform/process.h"
#include "host/platform/watch.h"

using namespace qrs::platform;

TEST(Libraries, EntryIsCalledAtEachLoadAndUnload) {
    const std::vector<std::string> attach = {"AfxInitExtensionModule()", "CDynLinkLibrary::CDynLinkLibrary()"};
    for (int round = 0; round < 3; ++round) {
        Error error;
        CallRecorder recorder;
        auto library = Library::load(ENTRY_ACCEPTING, error);
        ASSERT_TRUE(library) << error.message;
        EXPECT_EQ(recorder.calls(), attach);
        using Module = HMODULE (*)();
        const auto module = reinterpret_cast<Module>(library->symbol("entryModule"));
        ASSERT_TRUE(module);
        EXPECT_TRUE(module());
        EXPECT_FALSE(library->symbol("DllMain")) << "hidden";
        recorder.clear();
        library.reset();
        EXPECT_EQ(recorder.calls(), std::vector<std::string>{"AfxTermExtensionModule()"});
    }
}

TEST(Libraries, EndOfAnExtensionDeletesWhatItEntered) {
    struct Entered : CDynLinkLibrary {
        int* ends;
        Entered(AFX_EXTENSION_MODULE& extension, int* count) : CDynLinkLibrary(extension), ends(count) {}
        ~Entered() override { ++*ends; }
    };
    int ours = 0, theirs = 0;
    AFX_EXTENSION_MODULE extension{}, other{};
    AfxInitExtensionModule(extension, reinterpret_cast<HMODULE>(&ours));
    AfxInitExtensionModule(other, reinterpret_cast<HMODULE>(&theirs));
    new Entered(extension, &ours);
    new Entered(other, &theirs);
    AfxTermExtensionModule(extension);
    EXPECT_EQ(ours, 1);
    EXPECT_EQ(theirs, 0);
    AfxTermExtensionModule(extension, TRUE);
    EXPECT_EQ(theirs, 1);
}

TEST(Libraries, FailedLoadsSayWhy) {
    const Folder scratch;
    scratch.write("text.so", "no library");
    Error error;
    EXPECT_FALSE(Library::load(ENTRY_REFUSING, error));
    EXPECT_EQ(error.message, std::string(ENTRY_REFUSING) + ": its entry refused to start");
    EXPECT_TRUE(Library::load(ENTRY_ACCEPTING, error)) << "the next one is not held to it";
    EXPECT_FALSE(Library::load(scratch / "text.so", error));
    EXPECT_EQ(error.message.find((scratch / "text.so").string() + ": "), 0u);
    EXPECT_EQ(error.message.find("text.so", scratch.path().string().size() + 8), std::string::npos) << error.message;
    std::string whole;
    ASSERT_TRUE(readFile(ENTRY_ACCEPTING, whole, error));
    scratch.write("cut.so", whole.substr(0, 5000));
    EXPECT_FALSE(Library::load(scratch / "cut.so", error));
    EXPECT_EQ(error.message, (scratch / "cut.so").string() + ": the file is cut off");
    EXPECT_FALSE(Library::load(scratch / "none.so", error));
    EXPECT_NE(error.message.find(": No such file"), std::string::npos);
}

TEST(Windows, LiveUntilDestroyed) {
    struct Panel : CWnd {
        int* ends;
        explicit Panel(int* count) : ends(count) {}
        void PostNcDestroy() override { ++*ends; }
    };
    const RECT place{};
    int ends = 0;
    Panel panel(&ends);
    CWnd child;
    EXPECT_FALSE(panel.DestroyWindow());
    ASSERT_TRUE(panel.CreateEx(0, AfxRegisterWndClass(0), L"图层", WS_POPUP, place, nullptr, 0));
    EXPECT_FALSE(panel.CreateEx(0, nullptr, L"again", 0, place, nullptr, 0));
    ASSERT_TRUE(child.CreateEx(0, nullptr, L"", 0, place, &panel, 1));
    const HWND handle = panel.m_hWnd;
    EXPECT_TRUE(::IsWindow(handle));
    EXPECT_FALSE(panel.ShowWindow(SW_SHOW));
    EXPECT_TRUE(panel.IsWindowVisible());
    EXPECT_TRUE(panel.ShowWindow(SW_HIDE));
    EXPECT_FALSE(panel.IsWindowVisible());
    EXPECT_TRUE(panel.DestroyWindow());
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_FALSE(::IsWindow(child.m_hWnd)) << "it goes with its parent";
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(panel.m_hWnd, nullptr);
}

TEST(Streams, ClosedPipeIsNeitherAFailureNorAnEnd) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const int before = dup(STDOUT_FILENO);
    dup2(ends[1], STDOUT_FILENO);
    std::string received(1'000'000, '\0');
    std::thread reader([&] {
        for (std::size_t at = 0; at < received.size();) {
            at += static_cast<std::size_t>(read(ends[0], received.data() + at, received.size() - at));
        }
    });
    const bool whole = writeStandardOutput(std::string(1'000'000, 'x'));
    reader.join();
    close(ends[0]);
    const bool droppedBefore = isOutputDropped();
    const bool dropped = writeStandardOutput("x") && isOutputDropped();
    dup2(before, STDOUT_FILENO);
    close(before);
    close(ends[1]);
    EXPECT_TRUE(whole);
    EXPECT_EQ(received, std::string(1'000'000, 'x'));
    EXPECT_FALSE(droppedBefore);
    EXPECT_TRUE(dropped);
}

TEST(StreamsDeathTest, FilesDoNotStandInForMissingStreams) {
    EXPECT_EXIT(
        {
            for (const int stream : {STDIN_FILENO, STDOUT_FILENO})
                close(stream);
            keepStandardStreams();
            char byte;
            const bool isFree = dup(STDIN_FILENO) <= STDERR_FILENO;
            _exit(isFree || read(STDIN_FILENO, &byte, 1) != 0 || writeStandardOutput("x") ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(DeadlineDeathTest, EndsTheProgramAndLeavesNoTemporaryFile) {
    const Folder scratch;
    scratch.write("plan.dxf", "old");
    EXPECT_EXIT(
        {
            Error error;
            AtomicFile file;
            file.begin(scratch / "plan.dxf", error);
            file.write(std::string(1'000'000, 'x'));
            const Deadline deadline(0.05, "no answer within 0.05 seconds", 7);
            for (;;)
                pause();
        },
        testing::ExitedWithCode(7), "^no answer within 0.05 seconds\n$");
    EXPECT_EQ(scratch.names(), std::set<std::string>{"plan.dxf"});
    EXPECT_EQ(scratch.read("plan.dxf"), "old");

    // The same when the bytes of a mapped file are gone that is one of more than are watched.
    scratch.write("cut.dxf", std::string(100'000, 'x'));
    EXPECT_EXIT(
        {
            Error error;
            AtomicFile file;
            file.begin(scratch / "plan.dxf", error);
            std::vector<std::unique_ptr<MappedFile>> mapped;
            while (mapped.size() < 300)
                mapped.push_back(MappedFile::open(scratch / "cut.dxf", error));
            endWhenMappedFileIsCut("cut short", 3);
            std::filesystem::resize_file(scratch / "cut.dxf", 10);
            file.write(mapped.back()->bytes());
            file.commit(0, error);
        },
        testing::ExitedWithCode(3), "^cut short\n$");
    // Watched, it reads as zeros, and nothing is written until that was told.
    scratch.write("cut.dxf", std::string(100'000, 'x'));
    EXPECT_EXIT(
        {
            Error error;
            AtomicFile file;
            file.begin(scratch / "plan.dxf", error);
            const auto mapped = MappedFile::open(scratch / "cut.dxf", error);
            endWhenMappedFileIsCut("cut short", 3);
            std::filesystem::resize_file(scratch / "cut.dxf", 10);
            const bool isZero = mapped->bytes()[50'000] == 0 && mapped->bytes()[5] == 'x';
            const bool isKept = lostFile() == scratch / "cut.dxf" && !file.commit(0, error);
            const bool isToldOnce = takeLoss(mapped->bytes()) && lostFile().empty() && !mapped->isUnchanged(error);
            std::_Exit(isZero && isKept && isToldOnce ? 5 : 1);
        },
        testing::ExitedWithCode(5), "");
    EXPECT_EQ(scratch.names(), (std::set<std::string>{"cut.dxf", "plan.dxf"}));

    // Or when it is told to end.
    EXPECT_EXIT(
        {
            removeTemporariesWhenEnded(true);
            Error error;
            AtomicFile file;
            file.begin(scratch / "plan.dxf", error);
            kill(getpid(), SIGINT);
            for (;;)
                pause();
        },
        testing::KilledBySignal(SIGINT), "");
    EXPECT_EQ(scratch.names(), (std::set<std::string>{"cut.dxf", "plan.dxf"}));

    // Ended in time it does nothing, and its end does not wait for the limit.
    const auto start = std::chrono::steady_clock::now();
    Deadline(3600, "never", 7);
    Deadline(1e300, "never", 7);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}
