// No file a user can open crashes the application or opens half read.
#include "AppFixture.h"
#include "app/desktop/OtherAppLayout.h"
#include "editor/CommandIds.h"

#include <filesystem>

namespace {

TEST_F(AppTest, ADamagedFileOpensWholeOrIsRefusedWithItsNameAndFaultAndTheApplicationGoesOn)
{
    const std::string demo = ReadWholeFile(EXAMPLES_DIR "/Demo.VornOsc").value();
    const std::string path = folder / "Damaged.VornOsc";
    for (const nlohmann::json& c : Cases(DATA_DIR "/app.json", "damagedFiles")) {
        SCOPED_TRACE(c.dump());
        // The demo cut after keep bytes, with the bytes of put written at offset at.
        std::string bytes = c.value("text", demo.substr(0, c.value("keep", demo.size())));
        const std::vector<int> put = c.value("put", std::vector<int>());
        for (std::size_t i = 0; i < put.size(); ++i)
            bytes.at(c["at"].get<std::size_t>() + i) = static_cast<char>(put[i]);
        std::filesystem::remove(path);
        if (!c.value("missing", false))
            WriteWholeFile(path, bytes);
        answered.clear();
        answers = {"Ok"};
        EXPECT_EQ(Open(path), !c.contains("shown"));
        EXPECT_EQ(answered, c.value("shown", std::vector<std::string>()));
        if (!c.contains("shown"))
            delete window->ActiveFrame();
    }
    EXPECT_TRUE(window->Frames().isEmpty());
    EXPECT_TRUE(Open(CopyOfExample("Good.VornOsc"))) << "the application goes on";
}

// The Open dialog lists them beside the editor's own layouts. Each opens as a
// layout never saved and changed, named after its file, on the device its
// screen fits, and Save As proposes the file's name; what it left out is told
// once. One that cannot be read is refused naming the file and the fault.
TEST_F(AppTest, ATouchAppsLayoutOpensAsANewLayoutNamedAfterItsFileTellingWhatItLeftOut)
{
    EXPECT_EQ(OpenDialogFilter().toStdString(),
              "Layouts (*.VornOsc *.touchosc *.tosc *.jzml);;Vorn OSC Layout (*.VornOsc);;"
              "TouchOSC Layout (*.touchosc *.tosc);;Lemur Layout (*.jzml)");
    for (const nlohmann::json& c : Cases(DATA_DIR "/app.json", "otherAppLayouts")) {
        const std::string path = folder / c["file"].get<std::string>();
        SCOPED_TRACE(path);
        WriteWholeFile(path,
                       c.contains("sample")
                           ? ReadWholeFile(SAMPLES_DIR "/" + c["sample"].get<std::string>()).value()
                           : c["text"].get<std::string>());
        answered.clear();
        answers = {"Ok"};
        const std::size_t open = window->Frames().size();
        EXPECT_EQ(Open(path), c.contains("title"));
        EXPECT_EQ(answered, c["shown"].get<std::vector<std::string>>());
        if (!c.contains("title")) {
            EXPECT_EQ(window->Frames().size(), open);
            continue;
        }
        // The "*" of a change comes with the next refresh of the titles.
        EXPECT_EQ(Frame().ShownTitle().remove(u'*').toStdString(), c["title"]);
        EXPECT_TRUE(Frame().IsNeverSaved());
        EXPECT_TRUE(Frame().IsModified());
        EXPECT_EQ(Frame().Device(), c["device"]);
        answers = {""};
        Pick(ID_FILE_SAVE_AS);
        EXPECT_EQ(fileNames.back(), std::filesystem::path(path).stem());
    }
}

}  // namespace
