/// @file
/// Points in time and spans of it, in whole seconds; the time of day in parts; waiting.
#pragma once

#include <compare>
#include <cstdint>
#include <ctime>

#include <platform/text.h>
#include <platform/types.h>

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;      ///< from 1
    WORD wDayOfWeek;  ///< Sunday is 0
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
PLATFORM_API void GetLocalTime(SYSTEMTIME* time);
PLATFORM_API void GetSystemTime(SYSTEMTIME* time);  ///< UTC
/// The thread waits; no message is handled meanwhile, and the clock of the in-memory window system stands
/// still.
PLATFORM_API void Sleep(DWORD milliseconds);

class PLATFORM_API CTimeSpan {
  public:
    CTimeSpan() = default;
    CTimeSpan(std::int64_t seconds) : seconds_(seconds) {}  ///< NOLINT
    CTimeSpan(LONG days, int hours, int minutes, int seconds)
        : seconds_(((std::int64_t{days} * 24 + hours) * 60 + minutes) * 60 + seconds) {}
    LONGLONG GetDays() const { return seconds_ / 86400; }
    LONGLONG GetTotalHours() const { return seconds_ / 3600; }
    LONGLONG GetTotalMinutes() const { return seconds_ / 60; }
    LONGLONG GetTotalSeconds() const { return seconds_; }
    LONGLONG GetTimeSpan() const { return seconds_; }
    /// What is left beside the greater units.
    LONG GetHours() const { return static_cast<LONG>(GetTotalHours() % 24); }
    LONG GetMinutes() const { return static_cast<LONG>(GetTotalMinutes() % 60); }
    LONG GetSeconds() const { return static_cast<LONG>(seconds_ % 60); }
    /// `%D` days, `%H` `%M` `%S` two digits each, `%%` a percent sign; anything else stands for itself.
    CString Format(const CString& format) const;
    friend CTimeSpan operator+(CTimeSpan a, CTimeSpan b) { return {a.seconds_ + b.seconds_}; }
    friend CTimeSpan operator-(CTimeSpan a, CTimeSpan b) { return {a.seconds_ - b.seconds_}; }
    CTimeSpan& operator+=(CTimeSpan by) { return *this = *this + by; }
    CTimeSpan& operator-=(CTimeSpan by) { return *this = *this - by; }
    friend auto operator<=>(const CTimeSpan&, const CTimeSpan&) = default;

  private:
    std::int64_t seconds_ = 0;
};

/// Seconds since the beginning of 1970, UTC; the parts are those of local time.
class PLATFORM_API CTime {
  public:
    CTime() = default;
    CTime(std::time_t time) : time_(time) {}  ///< NOLINT
    ///@{
    /// Parts beyond their range raise CInvalidArgException. `isSummer`: 1 or 0 where the clock shows it
    /// twice.
    CTime(int year, int month, int day, int hour, int minute, int second, int isSummer = -1);
    explicit CTime(const SYSTEMTIME& time)
        : CTime(time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond) {}
    ///@}
    static CTime GetCurrentTime() { return {std::time(nullptr)}; }

    std::time_t GetTime() const { return time_; }
    int GetYear() const { return Local().tm_year + 1900; }
    int GetMonth() const { return Local().tm_mon + 1; }
    int GetDay() const { return Local().tm_mday; }
    int GetHour() const { return Local().tm_hour; }
    int GetMinute() const { return Local().tm_min; }
    int GetSecond() const { return Local().tm_sec; }
    int GetDayOfWeek() const { return Local().tm_wday + 1; }  ///< Sunday is 1
    ///@{
    /// As strftime, in local time and in UTC. A format of more than 4096 units gives the empty string.
    CString Format(const CString& format) const;
    CString FormatGmt(const CString& format) const;
    ///@}

    friend CTime operator+(CTime a, CTimeSpan b) { return {a.time_ + b.GetTimeSpan()}; }
    friend CTime operator-(CTime a, CTimeSpan b) { return {a.time_ - b.GetTimeSpan()}; }
    friend CTimeSpan operator-(CTime a, CTime b) { return {std::int64_t{a.time_} - b.time_}; }
    CTime& operator+=(CTimeSpan by) { return *this = *this + by; }
    CTime& operator-=(CTimeSpan by) { return *this = *this - by; }
    friend auto operator<=>(const CTime&, const CTime&) = default;

  private:
    std::tm Local() const;
    std::time_t time_ = 0;
};
