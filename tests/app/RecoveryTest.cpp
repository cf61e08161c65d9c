// Unsaved changes outlive a crash: recovery copies, kept while a layout has
// changes and offered at the next start.
#include "AppFixture.h"
#include "app/desktop/RecoveryKeeper.h"
#include "document/ControlTables.h"
#include "document/LayoutFile.h"
#include "editor/CommandIds.h"
#include "tests/support/FakeHost.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QThread>

#include <csignal>
#include <fstream>

namespace {

QString RecoveryRoot()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/recovery");
}

// A process number no running program has: one that has just ended.
qint64 EndedProcess()
{
    QProcess ended;
    ended.start(QStringLiteral("true"), {});
    ended.waitForFinished();
    return ended.processId() != 0 ? ended.processId() : 999999;
}

std::size_t ControlsOnFirstPage(const std::string& path)
{
    FakeHost host;
    OSCProject project;
    return ReadLayoutFile(Contents(path), project, &host) == 0 ? project.pages[0]->controls.size()
                                                               : 0;
}

QStringList CopiesIn(const QString& folder)
{
    return QDir(folder).entryList({QStringLiteral("*.VornOsc")}, QDir::Files);
}

TEST_F(AppTest, ALayoutHasARecoveryCopyExactlyWhileItHasUnsavedChanges)
{
    const QString ownCopies =
        RecoveryRoot() + QLatin1Char('/') + QString::number(QCoreApplication::applicationPid());
    const std::string path = CopyOfExample("Show.VornOsc");
    window->OpenLayout(QString::fromStdString(path));
    window->KeepRecoveryCopies();
    EXPECT_TRUE(CopiesIn(ownCopies).isEmpty());

    window->InsertControl(kFader);
    window->KeepRecoveryCopies();
    ASSERT_EQ(CopiesIn(ownCopies).size(), 1);
    const QString copy = ownCopies + QLatin1Char('/') + CopiesIn(ownCopies).front();
    EXPECT_EQ(ControlsOnFirstPage(copy.toStdString()), ControlsOnFirstPage(path) + 1)
        << "the copy holds the inserted control";
    QFile note(copy + QStringLiteral(".path"));
    ASSERT_TRUE(note.open(QIODevice::ReadOnly));
    EXPECT_EQ(note.readAll().toStdString(), path);

    PickModuleCommand(ID_FILE_SAVE);
    window->KeepRecoveryCopies();
    EXPECT_TRUE(CopiesIn(ownCopies).isEmpty()) << "saved: no copy";

    window->InsertControl(kKnob);
    window->KeepRecoveryCopies();
    EXPECT_EQ(CopiesIn(ownCopies).size(), 1);
    Answer({QMessageBox::Discard});
    window->ActiveFrame()->close();
    window->KeepRecoveryCopies();
    EXPECT_TRUE(CopiesIn(ownCopies).isEmpty()) << "given up: no copy";
}

TEST_F(AppTest, CopiesLeftByAnEndedRunAreOfferedOnceToReopenOrDiscard)
{
    for (const QMessageBox::StandardButton answer : {QMessageBox::Discard, QMessageBox::Open}) {
        SCOPED_TRACE(answer);
        const QString ended = RecoveryRoot() + QLatin1Char('/') + QString::number(EndedProcess());
        const QString running = RecoveryRoot() + QStringLiteral("/1");  // init never ends
        for (const QString& folder : {ended, running}) {
            QDir().mkpath(folder);
            QFile::copy(QStringLiteral(EXAMPLES_DIR "/Demo.VornOsc"),
                        folder + QStringLiteral("/layout-1.VornOsc"));
            std::ofstream((folder + QStringLiteral("/layout-1.VornOsc.path")).toStdString())
                << "/shows/Song.VornOsc";
        }
        answeredTexts->clear();
        Answer({answer});
        window->OfferRecovery();
        ASSERT_EQ(answeredTexts->size(), 1);
        EXPECT_TRUE(answeredTexts->front().contains(QStringLiteral("/shows/Song.VornOsc")));
        EXPECT_EQ(window->Frames().size(), answer == QMessageBox::Open ? 1 : 0);
        if (answer == QMessageBox::Open) {
            EXPECT_TRUE(
                Frame().LayoutPath().contains(QStringLiteral("/Recovered/Song (recovered ")));
        }
        EXPECT_FALSE(QDir(ended).exists());
        EXPECT_EQ(CopiesIn(running).size(), 1) << "a running application keeps its copies";
        QDir(running).removeRecursively();

        window->OfferRecovery();  // nothing is left to offer: no question
    }
}

TEST(Recovery, AKilledApplicationLeavesACopyOfItsUnsavedLayoutForTheNextStart)
{
    TempFolder folder;
    const std::string layout = folder / "Live.VornOsc";
    std::filesystem::copy_file(EXAMPLES_DIR "/Demo.VornOsc", layout);
    const std::string parameters = folder / "parameters.json";
    std::ofstream(parameters) << R"([{"name": "Cutoff", "device": 2, "control": 74, "x": 0,
        "y": 0, "width": 60, "height": 60, "min": 0, "max": 127, "type": "Knob"}])";

    QProcess vornosc;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), QString::fromStdString(folder / "data"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"),
                       QString::fromStdString(folder / "config"));
    vornosc.setProcessEnvironment(environment);
    vornosc.start(QStringLiteral(VORNOSC_BINARY),
                  {QStringLiteral("--insert"), QString::fromStdString(parameters),
                   QString::fromStdString(layout)});
    ASSERT_TRUE(vornosc.waitForStarted());
    const QString root = QString::fromStdString(folder / "data/vornosc/vornosc/recovery");
    const QString copies = root + QLatin1Char('/') + QString::number(vornosc.processId());
    for (int wait = 0; wait < 100 && CopiesIn(copies).isEmpty(); ++wait)
        QThread::msleep(100);
    ::kill(static_cast<pid_t>(vornosc.processId()), SIGKILL);
    ASSERT_TRUE(vornosc.waitForFinished());
    ASSERT_EQ(CopiesIn(copies).size(), 1);

    const QList<RecoveryKeeper::Leftover> leftovers = RecoveryKeeper(root).Leftovers();
    ASSERT_EQ(leftovers.size(), 1);
    EXPECT_EQ(leftovers[0].originalPath.toStdString(), layout);
    FakeHost host;
    OSCProject recovered;
    ASSERT_EQ(ReadLayoutFile(Contents(leftovers[0].copy.toStdString()), recovered, &host), 0);
    EXPECT_STREQ(recovered.pages[0]->controls[0]->name, "Cutoff");
}

}  // namespace
