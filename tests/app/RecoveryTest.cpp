// Unsaved changes outlive a crash: the recovery copies a killed run leaves are offered at the
// next start.
#include "AppFixture.h"

#include <QCoreApplication>
#include <QProcess>
#include <QThread>

#include <csignal>
#include <filesystem>

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
    EXPECT_TRUE(Frame().LayoutPath().contains(QStringLiteral("/Recovered/Live (recovered ")));
    EXPECT_NE(ReadWholeFile(Frame().LayoutPath().toStdString())->find("Cutoff"), std::string::npos)
        << "the copy holds the inserted control";
    EXPECT_EQ(QDir(running, QStringLiteral("*.VornOsc")).count(), 1)
        << "a running application keeps its copies";
    QDir(running).removeRecursively();
    answers = {"Discard"};
    window->OfferRecovery();
    EXPECT_EQ(answers.size(), 1u) << "nothing is left to offer: no question";
}

TEST_F(AppTest, AMoveWithTheMouseIsAChangeAskedAboutBeforeClosingKeptInACopyAndOfferedAfterACrash)
{
    Open(CopyOfExample("Moved.VornOsc"));
    Drag({64, 200}, {164, 200});  // Level 1, from x 44 to 144
    window->KeepRecoveryCopies();
    const QString copies = RecoveryFolder(QCoreApplication::applicationPid());
    EXPECT_EQ(QDir(copies, QStringLiteral("*.VornOsc")).count(), 1);
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
    ASSERT_EQ(window->Frames().size(), 2);
    for (const auto& control : ControlsOfLayout(Frame().LayoutPath().toStdString())) {
        if (std::string_view(control->name) == "Level 1") {
            EXPECT_EQ(control->x, 144);
        }
    }
}

}  // namespace
