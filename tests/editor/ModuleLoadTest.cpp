// The built module loaded as a host loads it: by file name, its entries
// resolved by their plain names, and an editor opened through them.
#include "TestHost.h"
#include "document/ControlClipboard.h"
#include "host/EditorModule.h"
#include "host/Toolkit.h"
#include "tests/support/TestFiles.h"
#include "view/MessageEvent.h"
#include "view/QtWindowHandle.h"

#include <QApplication>
#include <QMenu>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <set>
#include <sstream>

namespace {

using namespace editor_module;
using nlohmann::json;

template <typename T>
T Entry(const char* name)
{
    static void* const module = dlopen(VORNOSC_MODULE, RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr)
        throw std::runtime_error(dlerror());
    return reinterpret_cast<T>(dlsym(module, name));
}

// Made on first need, so that a test can run without one.
void NeedApplication()
{
    static int argc = 1;
    static char name[] = "module_tests", *argv[] = {name, nullptr};
    [[maybe_unused]] static auto* application = new QApplication(argc, argv);
}

TEST(Module, ShowsExactlyItsEntriesAndTablesByPlainNames)
{
    std::set<std::string> shown;
    std::istringstream nm(RunCommand("nm -D --defined-only " VORNOSC_MODULE).output);
    for (std::string line; std::getline(nm, line);)
        shown.insert(line.substr(line.rfind(' ') + 1));
    // The linker's own section markers are not the module's.
    for (const char* marker : {"__bss_start", "_edata", "_end"})
        shown.erase(marker);
    const auto names = Cases(DATA_DIR "/editor.json", "exportedNames").get<std::set<std::string>>();
    EXPECT_EQ(shown, names);
    for (const std::string& name : names)
        EXPECT_NE(Entry<void*>(name.c_str()), nullptr) << name;
}

TEST(Module, StartsOnceAndPublishesItsIdentifierKeysAndTables)
{
    const auto initialize = Entry<InitializeEntry>("VornOSCEditor_Initialize");
    const std::intptr_t nib = initialize();
    EXPECT_NE(nib, 0);
    EXPECT_EQ(initialize(), nib);
    EXPECT_EQ(*Entry<void**>("hInstance"), reinterpret_cast<void*>(nib));
    EXPECT_EQ(Entry<GetIdEntry>("GETID")(), 17016u);
    EXPECT_EQ(Entry<DllMainEntry>("DllMain")(nullptr, 2), 1);
    EXPECT_EQ(*Entry<void**>("hInstance"), reinterpret_cast<void*>(nib)) << "reason 2 does nothing";

    const auto* keys = Entry<const std::int32_t*>("AcceleratorsOSC");
    EXPECT_EQ(*Entry<const std::int32_t**>("hAccel"), keys);
    json records;  // of five words each, as the host reads them
    for (const std::int32_t* record = keys; records.size() < 9; record += 5)
        records.push_back(std::vector<std::int32_t>(record, record + 5));
    EXPECT_EQ(records, Cases(DATA_DIR "/editor.json", "accelerators"));
    EXPECT_STREQ(Entry<const char*>("EditorName"), "Vorn OSC Editor");
    const auto* inited = Entry<const unsigned char*>("Inited");
    EXPECT_EQ(std::count(inited, inited + 32, 0), 32);
    EXPECT_NE(*Entry<void**>("ArialFont"), nullptr);
}

TEST(Module, OpensEditorsInTheHostsFramesAndWithoutAParentOrAFrameNoWindow)
{
    NeedApplication();
    Entry<InitializeEntry>("VornOSCEditor_Initialize")();
    const auto open = Entry<OpenEditorEntry>("VornOSCEditor");
    auto** menu = Entry<QMenu**>("hMenu");

    QObject* lone = ObjectOf(open(nullptr, nullptr));
    ASSERT_NE(lone, nullptr);
    EXPECT_EQ(*menu, nullptr);
    delete lone;

    TestWindow hostWindow;
    hostWindow.resize(800, 600);
    EXPECT_EQ(open(HandleOf(&hostWindow), "/no/such/layout.VornOsc"), nullptr);
    auto* editor = qobject_cast<QWidget*>(ObjectOf(open(HandleOf(&hostWindow), nullptr)));
    ASSERT_NE(editor, nullptr);
    TestWindow* frame = hostWindow.frame;
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->editor, editor);
    EXPECT_TRUE(editor->isVisibleTo(frame));
    const int top = frame->contentsMargins().top();
    EXPECT_EQ(editor->geometry(), QRect(0, top, 600, 400 - top)) << "the frame's client area";
    EXPECT_EQ(frame->title, "New - OSC Editor");
    EXPECT_EQ(frame->geometry(), QRect(400, 0, 396, 450));
    ASSERT_NE(*menu, nullptr);
    EXPECT_EQ((*menu)->actions().size(), 7);
    EXPECT_EQ(hostWindow.lastRequest.words[kRequestMenuWord],
              reinterpret_cast<std::intptr_t>(*menu));
    EXPECT_EQ(hostWindow.lastRequest.words[kRequestAcceleratorsWord],
              reinterpret_cast<std::intptr_t>(Entry<const void*>("AcceleratorsOSC")));
    EXPECT_EQ(theTestBasics.allocArguments, (std::vector<int>{4, 0, 0, 0}));
    EXPECT_FALSE(frame->windowIcon().isNull());

    // A frame that is not made, or that is no window, opens no editor; the latter is closed.
    hostWindow.answer = TestWindow::Answer::kNoFrame;
    EXPECT_EQ(open(HandleOf(&hostWindow), nullptr), nullptr);
    hostWindow.answer = TestWindow::Answer::kNotAWindow;
    EXPECT_EQ(open(HandleOf(&hostWindow), nullptr), nullptr);
    EXPECT_TRUE(hostWindow.notAWindowClosed);
    EXPECT_EQ(hostWindow.notAWindow, nullptr) << "and destroyed";

    // The host fills the module's clipboard with controls of its own records.
    _OSCParms record{};
    Entry<ExternalPasteEntry>("ExternalPasteToClipboard")({&record, nullptr});
    const auto clipboard = Entry<const ControlList* (*)()>("GetControlClipboard");
    EXPECT_EQ(clipboard()->size(), 1u);
    Entry<ModuleEntry>("ClearClipboard")();
    EXPECT_TRUE(clipboard()->empty());
    delete frame;
}

// What a window makes of each message it is given: the address parts it may
// keep, and the long parameter as it arrived.
class MessageReceiver : public QObject {
public:
    std::vector<std::pair<AddressComponents, std::intptr_t>> got;
    bool event(QEvent* event) override
    {
        MessageEvent* m = MessageEvent::From(event);
        if (m == nullptr)
            return QObject::event(event);
        auto parts = m->TakeComponents();
        got.emplace_back(parts != nullptr ? *parts : AddressComponents{}, m->lParam);
        return true;
    }
};

TEST(Messages, OnlyAPostedTestValueHandsOverItsAddressPartsAndOtherLongParametersStayTheSenders)
{
    NeedApplication();
    MessageReceiver window;
    AddressComponents sendersOwn{"/sent"};
    int hostsOwn = 0;
    const auto hosts = reinterpret_cast<std::intptr_t>(&hostsOwn);
    const auto senders = reinterpret_cast<std::intptr_t>(&sendersOwn);
    toolkit::PostMessage(HandleOf(&window), WM_OSC_TESTVALUE, 5,
                         reinterpret_cast<std::intptr_t>(new AddressComponents{"/posted", "1"}));
    toolkit::PostMessage(HandleOf(&window), WM_OSC_CONTEXTMENU, 0, hosts);
    toolkit::PostMessage(HandleOf(&window), WM_OSC_TESTVALUE, 5, 0);
    QCoreApplication::sendPostedEvents(&window);
    toolkit::SendMessage(HandleOf(&window), WM_OSC_TESTVALUE, 5, senders);
    const std::vector<std::pair<AddressComponents, std::intptr_t>> expected{
        {{"/posted", "1"}, 0}, {{}, hosts}, {{}, 0}, {{}, senders}};
    EXPECT_EQ(window.got, expected);
    EXPECT_EQ(sendersOwn, AddressComponents{"/sent"});
}

TEST(ModuleDeathTest, WithoutAnApplicationNoEditorOpens)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        std::exit(Entry<OpenEditorEntry>("VornOSCEditor")(nullptr, nullptr) == nullptr ? 0 : 1),
        ::testing::ExitedWithCode(0), "");
}

TEST(ModuleDeathTest, AMissingNibIsReportedAndTheModuleStartsWithoutMenusOrIcons)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto child = [] {
        NeedApplication();
        testing::internal::CaptureStdout();
        Entry<MacInstanceInitializeEntry>("MacInstanceInitialize")("Missing");
        std::fputs(testing::internal::GetCapturedStdout().c_str(), stderr);
        TestWindow hostWindow;
        Entry<OpenEditorEntry>("VornOSCEditor")(HandleOf(&hostWindow), nullptr);
        const bool bare = hostWindow.frame != nullptr && hostWindow.frame->editor != nullptr &&
                          hostWindow.lastRequest.words[kRequestMenuWord] == 0 &&
                          hostWindow.frame->windowIcon().isNull();
        std::exit(bare ? 0 : 1);
    };
    EXPECT_EXIT(child(), ::testing::ExitedWithCode(0),
                "MacInstance: nib file not loaded = Missing\\.nib\n");
}

}  // namespace
