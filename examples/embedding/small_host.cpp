// A program with a main loop of its own that runs the application of a plug-in library for three frames.
#include <quillmarsh/host/session.h>

#include <cstdlib>
#include <iostream>

int main(int argc, char **argv)
{
    if (argc != 2)
    {
        std::cerr << "usage: small-host PLUGIN" << std::endl;
        return EXIT_FAILURE;
    }
    quillmarsh::host::Session session({.programName = "small-host", .out = &std::cout});
    session.Open(argv[1]);
    for (int frame = 0; frame < 3 && session.RunFrame(); ++frame)
    {
        // The program's own work for each frame goes here.
    }
    session.Close();
    return session.HasFailed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
