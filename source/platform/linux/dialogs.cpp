#include "source/platform/dialogs.h"

#include <iostream>

namespace quillmarsh::platform
{

eDialogAnswer PresentSystemDialog(DialogRequest const &request)
{
    std::cerr << request.title << '\n' << request.text << std::endl;
    return request.defaultAnswer;
}

} // namespace quillmarsh::platform
