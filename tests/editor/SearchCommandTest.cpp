// Search and replace: the dialog, its memory of the last answers, the replacing.
#include "DialogPlay.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "editor/SearchCommand.h"
#include "editor/SearchMemory.h"

#include <QDialog>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace Qt::StringLiterals;

// Every test leaves the module's memory as it found it, so that each sees the
// values of a freshly loaded module whatever ran before.
class SearchAndReplace : public ::testing::Test {
protected:
    void TearDown() override
    {
        Search = search, Replace = replace, inName = name, inCommand = command;
    }
    const std::string search = Search, replace = Replace;
    const int name = inName, command = inCommand;
};

std::string Memory()
{
    return Search + '/' + Replace + ' ' + std::to_string(inName) + std::to_string(inCommand);
}

// Plays script on the dialog over a project whose two pages each hold a
// control "Fader 1" that sends "/Fader/1"; returns the texts afterwards.
std::string Replacing(const QString& script)
{
    OSCProject project;
    project.AddPage();
    for (const auto& page : project.pages) {
        OSCControl& c = *page->controls.emplace_back(std::make_unique<OSCControl>());
        CopyTextField(c.name, "Fader 1");
        CopyTextField(c.command, "/Fader/1");
    }
    EXPECT_EQ(RunSearchAndReplace(project, Playing(script)), script.endsWith(u"OK"_s));
    std::string texts;
    for (const auto& page : project.pages)
        texts.append(TextOf(page->controls[0]->name))
            .append(" ")
            .append(TextOf(page->controls[0]->command))
            .append(";");
    return texts;
}

TEST_F(SearchAndReplace, FirstUseOffersEmptyTextsInNamesAndCommandsAndOkOnlyWithSearchTextAndABox)
{
    EXPECT_EQ(Memory(), "/ 11");
    const struct {
        QString script;
        bool ok;
    } cases[] = {{u""_s, false},
                 {u"replace=R|search=F"_s, true},
                 {u"search=F|inControlName"_s, true},
                 {u"search=F|inControlCommand"_s, true},
                 {u"search=F|inControlName|inControlCommand"_s, false},
                 {u"inControlName|inControlCommand|search=F|inControlCommand"_s, true},
                 {u"inControlName|inControlCommand|inControlName"_s, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.script.toStdString());
        OSCProject project;
        RunSearchAndReplace(project, Playing(c.script, [&](QDialog& dialog) {
                                EXPECT_EQ(OkEnabled(dialog), c.ok);
                            }));
    }
}

TEST_F(SearchAndReplace, TheAnswersAreRememberedWhateverTheButtonAndOkReplacesOnEveryPage)
{
    const QString s256(256, u's'), r255(255, u'r');
    const std::string same = "Fader 1 /Fader/1;Fader 1 /Fader/1;";
    const struct {
        QString script;
        std::string after, memory;
    } cases[] = {
        {u"search=Fader|replace=Slider|OK"_s, "Slider 1 /Slider/1;Slider 1 /Slider/1;",
         "Fader/Slider 11"},
        {u"search=Fader|replace=Slider|inControlName|OK"_s, "Fader 1 /Slider/1;Fader 1 /Slider/1;",
         "Fader/Slider 01"},
        {u"search=Fader|inControlCommand|OK"_s, "New 1 /Fader/1;New 1 /Fader/1;", "Fader/New 10"},
        {u"search=fader|OK"_s, same, "fader/New 11"},
        {u"search=Fader|inControlName|Cancel"_s, same, "Old/New 11"},
        {u"search="_s + s256 + u"|replace="_s + r255 + u"|OK"_s, same,
         std::string(255, 's') + '/' + std::string(255, 'r') + " 11"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.script.left(60).toStdString());
        Search = "Old", Replace = "New", inName = inCommand = 1;
        EXPECT_EQ(Replacing(c.script), c.after);
        EXPECT_EQ(Memory(), c.memory);
        EXPECT_EQ(Replacing(u"OK"_s), c.after) << "the next use starts from the answers";
    }
}

}  // namespace
