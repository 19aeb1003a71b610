#pragma once

#include "webi18n/parsedatetime.h"

namespace testsupport {

/// The moment as a parser gives it that found its date, its time or both: the part that `fields` lacks is 0.
inline vel::DateTime only(unsigned fields, vel::DateTime moment)
{
    if ((fields & vel::ParseDateTime::kDate) == 0) {
        moment.m_nYear = 0;
        moment.m_nMonth = 0;
        moment.m_nDay = 0;
    }
    if ((fields & vel::ParseDateTime::kTime) == 0) {
        moment.m_nHour = 0;
        moment.m_nMinute = 0;
        moment.m_nSecond = 0;
    }
    return moment;
}

}  // namespace testsupport
