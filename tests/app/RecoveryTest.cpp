// Unsaved changes outlive a crash: the recovery copies a killed run leaves are offered at the
// next start.
#include "AppFixture.h"
#include "document/ControlTables.h"

#include <QCoreApplication>
#include <QProcess>
#include <QThread>

#include <csignal>
#include <filesystem>
#include <map>

namespace {

TEST_F(AppTest, AKilledApplicationsUnsavedLayoutIsOfferedOnceAtTheNextStartToReopenOrDiscard)
{
    CopyOfExample("Live.VornOsc");
    QProcess vornosc;
    // Named as typed in the layout's folder: the copy keeps where the layout is.
    vornosc.setWorkingDirectory(QString::fromStdString(folder.path()));
    vornosc.start(QStringLiteral(VORNOSC_BINARY),
                  {QStringLiteral("--insert"), QStringLiteral(DATA_DIR "/parameters.json"),
                   QStringLiteral("Live.VornOsc")});
    ASSERT_TRUE(vornosc.waitForStarted());
    const QString killed = RecoveryFolder(vornosc.processId());
    for (int wait = 0; wait < 200 && QDir(killed, QStringLiteral("*.VornOsc")).isEmpty(); ++wait)
        QThread::msleep(50);
    ::kill(static_cast<pid_t>(vornosc.processId()), SIGKILL);
    ASSERT_TRUE(vornosc.waitForFinished());
    std::filesystem::rename(killed.toStdString(), folder / "left");
    const QString running = RecoveryFolder(1);  // init never ends
    std::filesystem::copy(folder / "left", running.toStdString());

    for (const std::string answer : {"Discard", "Open"}) {
        SCOPED_TRACE(answer);
        std::filesystem::copy(folder / "left", killed.toStdString());
        answered.clear();
        answers = {answer};
        window->OfferRecovery();
        ASSERT_EQ(answered.size(), 1u);
        EXPECT_NE(answered[0].find("\n<folder>/Live.VornOsc, changed "), std::string::npos);
        EXPECT_FALSE(QDir(killed).exists());
        ASSERT_EQ(window->Frames().size(), answer == "Open" ? 1 : 0);
    }
    // The layout is its own again, changed until saved there.
    const std::string live = folder / "Live.VornOsc";
    EXPECT_EQ(Frame().LayoutPath().toStdString(), live);
    QCoreApplication::processEvents();
    EXPECT_EQ(Frame().ShownTitle(), QStringLiteral("Live*"));
    EXPECT_EQ(ReadWholeFile(live)->find("Cutoff"), std::string::npos) << "not saved yet";
    const QString mine = RecoveryFolder(QCoreApplication::applicationPid());
    EXPECT_EQ(QDir(mine, QStringLiteral("*.VornOsc")).count(), 1) << "kept by this run now";
    window->SaveLayout();
    EXPECT_NE(ReadWholeFile(live)->find("Cutoff"), std::string::npos)
        << "the copy held the inserted control";
    EXPECT_FALSE(Frame().IsModified());
    window->KeepRecoveryCopies();
    EXPECT_EQ(QDir(mine, QStringLiteral("*.VornOsc")).count(), 0) << "a saved layout needs none";
    EXPECT_EQ(QDir(running, QStringLiteral("*.VornOsc")).count(), 1)
        << "a running application keeps its copies";
    QDir(running).removeRecursively();
    answers = {"Discard"};
    window->OfferRecovery();
    EXPECT_EQ(answers.size(), 1u) << "nothing is left to offer: no question";
}

TEST_F(AppTest, AMoveWithTheMouseIsAChangeAskedAboutBeforeClosingKeptInACopyAndOfferedAfterACrash)
{
    window->NewLayout();
    window->InsertControl(kKnob);
    Open(CopyOfExample("Moved.VornOsc"));
    Drag({64, 200}, {164, 200});  // Level 1, from x 44 to 144
    window->KeepRecoveryCopies();
    const QString copies = RecoveryFolder(QCoreApplication::applicationPid());
    EXPECT_EQ(QDir(copies, QStringLiteral("*.VornOsc")).count(), 2);
    answers = {"Cancel"};
    Frame().close();
    EXPECT_EQ(answered, std::vector<std::string>{
                            "Save the changes to \u201cMoved.VornOsc\u201d before closing?"});

    // The copies of a run that stopped without quitting, under a process that is gone.
    QProcess gone;
    gone.start(QStringLiteral("true"));
    ASSERT_TRUE(gone.waitForStarted());
    const qint64 run = gone.processId();
    gone.waitForFinished();
    std::filesystem::copy(copies.toStdString(), RecoveryFolder(run).toStdString());
    answers = {"Open"};
    window->OfferRecovery();
    ASSERT_EQ(window->Frames().size(), 4);
    // Each reopens as it stood: under its own path, or as a new layout, changed.
    std::map<std::string, std::string> reopened;
    for (EditorFrame* frame : window->Frames().mid(2)) {
        EXPECT_TRUE(frame->IsModified());
        const std::string copy = folder / "copy.VornOsc";
        ASSERT_TRUE(frame->WriteCopy(QString::fromStdString(copy)));
        for (const auto& control : ControlsOfLayout(copy))
            reopened[frame->LayoutPath().toStdString()] +=
                control->name + (' ' + std::to_string(control->x)) + ',';
    }
    EXPECT_TRUE(reopened["New"].starts_with("Knob 1 ")) << reopened["New"];
    EXPECT_NE(reopened[folder / "Moved.VornOsc"].find("Level 1 144,"), std::string::npos);
}

}  // namespace
