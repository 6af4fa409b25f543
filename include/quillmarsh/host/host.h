// Every public header of the library for hosts, which programs link as quillmarsh::host.
#ifndef QUILLMARSH_HOST_HOST_H
#define QUILLMARSH_HOST_HOST_H

#include <quillmarsh/host/applicationwalk.h>
#include <quillmarsh/host/appwindow.h>
#include <quillmarsh/host/consolecommands.h>
#include <quillmarsh/host/consolehistory.h>
#include <quillmarsh/host/consolelines.h>
#include <quillmarsh/host/devicegroup.h>
#include <quillmarsh/host/failures.h>
#include <quillmarsh/host/frameorder.h>
#include <quillmarsh/host/framepacer.h>
#include <quillmarsh/host/hostconsole.h>
#include <quillmarsh/host/hostkernel.h>
#include <quillmarsh/host/hostrobot.h>
#include <quillmarsh/host/kernelrequests.h>
#include <quillmarsh/host/linesource.h>
#include <quillmarsh/host/pluginset.h>
#include <quillmarsh/host/session.h>
#include <quillmarsh/host/subsystemgroup.h>
#include <quillmarsh/host/textoutput.h>
#include <quillmarsh/host/videogroup.h>
#include <quillmarsh/host/videooffers.h>
#include <quillmarsh/host/waitcmd.h>
#include <quillmarsh/host/windowtitle.h>

#endif
