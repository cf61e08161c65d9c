#include "CommandLine.h"
#include "desktop/DesktopApplication.h"

int main(int argc, char* argv[])
{
    if (WantsDesktop(argc, argv))
        return RunDesktop(argc, argv);
    return RunCommandLine(argc, argv);
}
