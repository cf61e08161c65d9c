#include "RenderCommand.h"

#include "CommandLineHost.h"
#include "LayoutCommands.h"
#include "LayoutLoading.h"
#include "document/IgnoringCase.h"
#include "document/OSCProject.h"
#include "document/TemporaryOutput.h"
#include "formats/LayoutFormats.h"
#include "view/ArialFont.h"
#include "view/TVornOSCView.h"

#include <QApplication>
#include <QImage>

#include <cstdio>
#include <cstdlib>

const char kRenderSynopsis[] =
    "vornosc render LAYOUT --out FILE.png [--page N] [--device iphone|ipad] [--test-mode] "
    "[--select all]";

namespace {

// The command prints its own errors only: Qt's notes about the session it
// runs in (no runtime folder, say) would read as failures.
void KeepQtNotesQuiet(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "vornosc: %s\n", text.toLocal8Bit().constData());
}

// The canvas needs an application object. Pictures are painted off screen, the
// same with or without a display.
class OffscreenApplication {
public:
    OffscreenApplication()
    {
        qInstallMessageHandler(KeepQtNotesQuiet);
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        application_ = std::make_unique<QApplication>(argc_, argv_);
        CreateArialFont();
    }
    ~OffscreenApplication() { DestroyArialFont(); }

private:
    int argc_ = 1;
    char name_[8] = "vornosc";
    char* argv_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> application_;
};

QImage PaintPage(OSCProject& project, const CommandArguments& arguments)
{
    project.currentPage = arguments.page - 1;
    if (arguments.selectAll)
        project.SelectAll();
    TVornOSCView view(project);
    view.testMode = arguments.testMode ? 1 : 0;
    const int w = project.GetScreenW();
    const int h = project.GetScreenH();
    const CRect client = view.ClientRect();
    view.resize(w + view.width() - client.Width(), h + view.height() - client.Height());
    QImage picture(w, h, QImage::Format_RGB32);
    view.render(&picture, QPoint(), QRegion(0, 0, w, h));
    return picture;
}

}  // namespace

int RunRender(const CommandArguments& arguments)
{
    if (arguments.files.size() != 1)
        return UsageError("render", "give one layout file", kRenderSynopsis);
    const std::string& path = arguments.files[0];
    const LayoutFormat* format = FindLayoutFormat(path);
    if (format == nullptr || format->read == nullptr)
        return UsageError("render", UnknownInput(path), kRenderSynopsis);
    if (!arguments.out)
        return UsageError("render", "give the picture's file with --out FILE.png", kRenderSynopsis);
    const std::string& out = *arguments.out;
    if (!EndsWithIgnoringCase(out, ".png"))
        return UsageError("render", "the picture \"" + out + "\" must end in .png",
                          kRenderSynopsis);

    CommandLineHost host;
    OSCProject project;
    if (const int status = LoadLayout(path, *format, arguments, project, host))
        return status;
    const int pageCount = static_cast<int>(project.pages.size());
    if (arguments.page < 1 || arguments.page > pageCount) {
        return Failure(path, "there is no page " + std::to_string(arguments.page) +
                                 ": pages count from 1 and the layout has " +
                                 std::to_string(pageCount));
    }

    const OffscreenApplication application;
    const QImage picture = PaintPage(project, arguments);
    TemporaryOutput output(out);
    std::string error;
    if (!output.Create(error))
        return Failure(out, error);
    if (!picture.save(QString::fromStdString(output.Path()), "PNG"))
        return Failure(out, "cannot write the picture");
    if (!output.Commit(error))
        return Failure(out, error);
    return kExitSuccess;
}

std::string RenderHelp()
{
    return std::string("Usage: ") + kRenderSynopsis +
           "\n\nPaints one page of a layout as the editor's canvas shows it, into a PNG the\n"
           "size of the device's screen. No display is needed. LAYOUT ends in " +
           ReadableExtensions() +
           ".\n\nOptions:\n"
           "  --out FILE.png        the picture to write; it appears only once complete\n"
           "  --page N              the page to paint, counted from 1 (default 1)\n"
           "  --test-mode           paint as in test mode: the banner and control values\n"
           "  --select all          paint every control of the page selected\n" +
           kDeviceHelp;
}
