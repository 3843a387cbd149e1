#include <platform/calendar.h>

#include <chrono>
#include <thread>

#include <platform/exception.h>

namespace {

using PartsOf = std::tm* (*)(const std::time_t*, std::tm*);

std::tm Parts(std::time_t time, PartsOf of) {
    std::tm parts{};
    of(&time, &parts);
    return parts;
}

void Read(SYSTEMTIME* time, PartsOf of) {
    if (!time) return;
    std::timespec now{};
    std::timespec_get(&now, TIME_UTC);
    const std::tm parts = Parts(now.tv_sec, of);
    const auto word = [](long value) { return static_cast<WORD>(value); };
    *time = {word(parts.tm_year + 1900), word(parts.tm_mon + 1),     word(parts.tm_wday),
             word(parts.tm_mday),        word(parts.tm_hour),        word(parts.tm_min),
             word(parts.tm_sec),         word(now.tv_nsec / 1000000)};
}

CString Formatted(const CString& format, const std::tm& parts) {
    constexpr int kLongest = 4096;
    if (format.GetLength() > kLongest) return CString();
    // The blank tells an empty result from one that needs more room.
    const std::string bytes = ToUtf8(format) + " ";
    std::string text(256, '\0');
    std::size_t written = 0;
    while ((written = std::strftime(text.data(), text.size(), bytes.c_str(), &parts)) == 0)
        text.resize(text.size() * 4);
    return FromUtf8({text.data(), written - 1});
}

}  // namespace

void GetLocalTime(SYSTEMTIME* time) {
    Read(time, localtime_r);
}

void GetSystemTime(SYSTEMTIME* time) {
    Read(time, gmtime_r);
}

void Sleep(DWORD milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

CString CTimeSpan::Format(const CString& format) const {
    CString text;
    for (int i = 0; i < format.GetLength(); ++i) {
        const WCHAR unit = format[i];
        const WCHAR kind = unit == u'%' && i + 1 < format.GetLength() ? format[++i] : u'\0';
        switch (kind) {
            case u'D':
                text.AppendFormat(u"%lld", GetDays());
                break;
            case u'H':
                text.AppendFormat(u"%02d", GetHours());
                break;
            case u'M':
                text.AppendFormat(u"%02d", GetMinutes());
                break;
            case u'S':
                text.AppendFormat(u"%02d", GetSeconds());
                break;
            case u'\0':
            case u'%':
                text += unit;
                break;
            default:
                (text += unit) += kind;
                break;
        }
    }
    return text;
}

CTime::CTime(int year, int month, int day, int hour, int minute, int second, int isSummer) {
    const auto outside = [](int value, int least, int most) { return value < least || value > most; };
    if (outside(year, 1900, 9999) || outside(month, 1, 12) || outside(day, 1, 31) || outside(hour, 0, 23) ||
        outside(minute, 0, 59) || outside(second, 0, 59))
        AfxThrowInvalidArgException();
    std::tm parts{};
    parts.tm_year = year - 1900;
    parts.tm_mon = month - 1;
    parts.tm_mday = day;
    parts.tm_hour = hour;
    parts.tm_min = minute;
    parts.tm_sec = second;
    parts.tm_isdst = isSummer;
    time_ = std::mktime(&parts);
}

std::tm CTime::Local() const {
    return Parts(time_, localtime_r);
}

CString CTime::Format(const CString& format) const {
    return Formatted(format, Local());
}

CString CTime::FormatGmt(const CString& format) const {
    return Formatted(format, Parts(time_, gmtime_r));
}
