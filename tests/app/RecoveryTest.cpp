// Unsaved changes outlive a crash: recovery copies, kept while a layout has changes and offered
// at the next start.
#include "AppFixture.h"
#include "document/ControlTables.h"
#include "editor/CommandIds.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>

#include <csignal>
#include <filesystem>

namespace {

QString RecoveryFolder(qint64 run)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/recovery/") + QString::number(run);
}

QStringList CopiesIn(const QString& folder)
{
    return QDir(folder).entryList({QStringLiteral("*.VornOsc")}, QDir::Files);
}

TEST_F(AppTest, ALayoutHasARecoveryCopyExactlyWhileItHasUnsavedChangesAndNoneAfterACleanExit)
{
    const QString own = RecoveryFolder(QCoreApplication::applicationPid());
    const auto copies = [&] {
        window->KeepRecoveryCopies();
        return CopiesIn(own).size();
    };
    Open(CopyOfExample("Show.VornOsc"));
    EXPECT_EQ(copies(), 0);
    window->InsertControl(kFader);
    EXPECT_EQ(copies(), 1);
    Pick(ID_FILE_SAVE);
    EXPECT_EQ(copies(), 0) << "saved";
    window->InsertControl(kKnob);
    EXPECT_EQ(copies(), 1);
    WillAnswer({"Discard"});
    Frame().close();
    EXPECT_EQ(copies(), 0) << "given up";
    window.reset();
    EXPECT_FALSE(QDir(own).exists());
}

TEST_F(AppTest, AKilledApplicationsUnsavedLayoutIsOfferedOnceAtTheNextStartToReopenOrDiscard)
{
    const std::string layout = CopyOfExample("Live.VornOsc");
    WriteWholeFile(folder / "parameters.json",
                   R"([{"name": "Cutoff", "device": 2, "control": 74, "x": 0, "y": 0,
                       "width": 60, "height": 60, "min": 0, "max": 127, "type": "Knob"}])");
    QProcess vornosc;
    vornosc.start(QStringLiteral(VORNOSC_BINARY),
                  {QStringLiteral("--insert"), QString::fromStdString(folder / "parameters.json"),
                   QString::fromStdString(layout)});
    ASSERT_TRUE(vornosc.waitForStarted());
    const QString killed = RecoveryFolder(vornosc.processId());
    for (int wait = 0; wait < 200 && CopiesIn(killed).isEmpty(); ++wait)
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
        WillAnswer({answer});
        window->OfferRecovery();
        ASSERT_EQ(answered.size(), 1u);
        EXPECT_NE(answered[0].find("\n<folder>/Live.VornOsc, changed "), std::string::npos);
        EXPECT_FALSE(QDir(killed).exists());
        ASSERT_EQ(window->Frames().size(), answer == "Open" ? 1 : 0);
    }
    EXPECT_TRUE(Frame().LayoutPath().contains(QStringLiteral("/Recovered/Live (recovered ")));
    EXPECT_STREQ(ReadLayout(Frame().LayoutPath().toStdString())->pages[0]->controls[0]->name,
                 "Cutoff");
    EXPECT_EQ(CopiesIn(running).size(), 1) << "a running application keeps its copies";
    QDir(running).removeRecursively();
    WillAnswer({"Discard"});
    window->OfferRecovery();
    EXPECT_EQ(answers.size(), 1u) << "nothing is left to offer: no question";
}

}  // namespace
