// Text forms of a date and a time of day that are given.
#ifndef QUILLMARSH_SOURCE_BASETOOLS_TIMETEXT_H
#define QUILLMARSH_SOURCE_BASETOOLS_TIMETEXT_H

#include <quillmarsh/basetools/time.h>

#include "source/platform/clock.h"

namespace quillmarsh::time
{

string FormatDate(platform::LocalDateTime const &moment, bool shortYear, bool withDayName,
                  DateTimeSeparators const &separators);
string FormatTime(platform::LocalDateTime const &moment, bool withMilliseconds, DateTimeSeparators const &separators);

} // namespace quillmarsh::time

#endif
