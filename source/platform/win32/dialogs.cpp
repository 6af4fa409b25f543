#include "source/platform/dialogs.h"

#include <quillmarsh/basetools/texttools.h>

#include "source/platform/win32/widetext.h"
#include "source/platform/win32/windows.h"

#include <iostream>

namespace quillmarsh::platform
{
namespace
{

UINT GetButtonFlags(DialogRequest const &request)
{
    switch (request.buttons)
    {
    case eDialogButtons::e_abortRetryIgnore:
        return MB_ABORTRETRYIGNORE | (request.defaultAnswer == eDialogAnswer::e_retry    ? MB_DEFBUTTON2
                                      : request.defaultAnswer == eDialogAnswer::e_ignore ? MB_DEFBUTTON3
                                                                                         : MB_DEFBUTTON1);
    case eDialogButtons::e_cancelOk:
        return MB_OKCANCEL | (request.defaultAnswer == eDialogAnswer::e_cancel ? MB_DEFBUTTON2 : MB_DEFBUTTON1);
    default:
        return MB_OK;
    }
}

int ShowMessageBox(DialogRequest const &request)
{
    UINT const flags = MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND | GetButtonFlags(request);
    wstring text;
    wstring title;
    // MessageBoxA would expect the system's code page.
    bool const isWide = !IsAscii(request.text + request.title) && AsciiToUnicode(request.text, text) &&
                        AsciiToUnicode(request.title, title);
    return isWide ? MessageBoxW(nullptr, ToSystem(text), ToSystem(title), flags)
                  : MessageBoxA(nullptr, request.text.c_str(), request.title.c_str(), flags);
}

} // namespace

eDialogAnswer PresentSystemDialog(DialogRequest const &request)
{
    switch (ShowMessageBox(request))
    {
    case IDOK:
        return eDialogAnswer::e_ok;
    case IDCANCEL:
        return eDialogAnswer::e_cancel;
    case IDABORT:
        return eDialogAnswer::e_abort;
    case IDRETRY:
        return eDialogAnswer::e_retry;
    case IDIGNORE:
        return eDialogAnswer::e_ignore;
    default:
        // There is no desktop for the dialog.
        std::cerr << MakePrintable(request.title) << '\n' << MakePrintable(request.text, true) << std::endl;
        return request.defaultAnswer;
    }
}

} // namespace quillmarsh::platform
