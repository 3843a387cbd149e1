// Texts, rectangles, collections and times, as programs use them.
#include <afxwin.h>
#include <tchar.h>

#include <gtest/gtest.h>

#include "resource.h"

namespace {

struct Idiom {
    const char* name;
    bool (*holds)();
};

class Values : public testing::TestWithParam<Idiom> {};

TEST_P(Values, Hold) {
    EXPECT_TRUE(GetParam().holds());
}

CString Formatted(LPCTSTR format, int number) {
    CString text;
    text.Format(format, number);
    return text;
}

const Idiom kIdioms[] = {
    {"text from bytes", [] { return CString(std::string("a\xC3\xA4")) == u"a\u00E4"; }},
    {"literals of every kind",
     [] {
         const CString text = _T("ab");
         return text == "ab" && L"ab" == text && text != _T("b") && text < L"b" && text >= "ab" &&
                _T("b") > text;
     }},
    {"sums with literals and units",
     [] {
         CString text = "a";
         text = _T('<') + text + L"b" + 'c' + _T("d") + u'>';
         return text == "<abcd>" && std::string("x") + ToUtf8(text) == "x<abcd>";
     }},
    {"a unit and a null pointer",
     [] { return CString(_T('x')) == "x" && CString() == static_cast<LPCTSTR>(NULL); }},
    {"Tokenize",
     [] {
         const CString text = _T(",one,,two;three");
         CString all;
         int from = 0;
         for (CString part = text.Tokenize(_T(",;"), from); from != -1; part = text.Tokenize(_T(",;"), from))
             all += _T("[") + part + _T("]");
         return all == "[one][two][three]" && text.Tokenize(_T(","), from).IsEmpty();
     }},
    {"Format of texts",
     [] {
         CString text(_T("x"));
         text.Format(_T("%s-%s-%S-%5.2f|%-3d|%I64d"), text, L"wide", "bytes", 1.5, 7, INT64{1} << 40);
         return text == "x-wide-bytes- 1.50|7  |1099511627776";
     }},
    {"AppendFormat, L formats",
     [] {
         CString text = _T("a");
         text.AppendFormat(L"%c%03d", L'b', 5);
         text.AppendFormat(_T("%%"));
         return text == "ab005%" && Formatted(_T("%X"), 255) == "FF";
     }},
    {"LoadString and formats from the table",
     [] {
         CString text, formatted;
         formatted.Format(IDS_FORMAT, 3, _T("9"));
         TCHAR cut[4];
         return text.LoadString(IDS_ABOUT) && text == "&About \"Host\"..." && formatted == "3 of 9" &&
                ::LoadString(AfxGetInstanceHandle(), IDS_FORMAT, cut, 4) == 3 && CString(cut) == "%d " &&
                !text.LoadString(999) && text.IsEmpty();
     }},
    {"Insert, Delete, Remove, Replace",
     [] {
         CString text = _T("abcabc");
         const bool counts = text.Insert(99, _T("!")) == 7 && text.Insert(-1, 'x') == 8 &&
                             text.Delete(1, 2) == 6 && text.Remove('a') == 1 && text.Replace('c', 'd') == 2 &&
                             text.Delete(9) == 5;
         return counts && text == "xdbd!";
     }},
    {"trimming with sets",
     [] {
         CString text = _T(" --a- ");
         return CString(text).Trim() == "--a-" && CString(text).Trim(_T(" -")) == "a" &&
                text.TrimLeft().TrimLeft('-') == "a- " && text.TrimRight(_T("- ")) == "a";
     }},
    {"spans and searches",
     [] {
         const CString text = _T("12ab12");
         return text.SpanIncluding(_T("0123456789")) == "12" && text.SpanExcluding(_T("abc")) == "12" &&
                text.FindOneOf(_T("ba")) == 2 && text.FindOneOf(_T("z")) == -1 && text.Find("ab") == 2;
     }},
    {"buffers",
     [] {
         CString text;
         LPTSTR units = text.GetBufferSetLength(3);
         units[0] = 'a', units[1] = 'b', units[2] = 'c';
         text.ReleaseBuffer(2);
         CString turned(text);
         turned.MakeReverse().MakeUpper();
         text.Truncate(1);
         return text == "a" && turned == "BA";
     }},
    {"rectangles by pointer",
     [] {
         CRect a(0, 0, 10, 10), common, both;
         RECT b = {5, 5, 20, 20};
         common.IntersectRect(&a, &b);
         both.UnionRect(a, &b);
         ::OffsetRect(&b, 1, 1);
         return common == CRect(5, 5, 10, 10) && both == CRect(CPoint(0, 0), CPoint(20, 20)) && b.left == 6 &&
                ::PtInRect(&b, CPoint(6, 6)) && !::IsRectEmpty(&b) && ::EqualRect(a, CRect(&a)) &&
                (a & CRect(&b)) == CRect(6, 6, 10, 10);
     }},
    {"rectangles that move and grow",
     [] {
         CRect a(1, 2, 11, 12), rest;
         a.MoveToXY(CPoint(5, 5));
         a.InflateRect(1, 2, 3, 4);
         a += CPoint(1, 1);
         rest.SubtractRect(&a, CRect(0, 0, 99, 10));
         return a == CRect(5, 4, 19, 20) && rest == CRect(5, 10, 19, 20) &&
                CPoint(3, 4) + CSize(1, 1) == CPoint(4, 5) && CPoint(3, 4) - CPoint(1, 1) == CSize(2, 3);
     }},
    {"handles as parameters and numbers",
     [] {
         const HICON icon(7, 9);
         HWND none = NULL;
         const LPARAM packed = (LPARAM)icon;
         return (HICON)packed == icon && none == NULL && (WPARAM)none == 0 && HIWORD(MAKELONG(1, 2)) == 2;
     }},
    {"CArray",
     [] {
         CArray<CPoint, CPoint&> points;
         CPoint point(1, 2);
         points.Add(point);
         points.SetAtGrow(3, CPoint(3, 4));
         points.Append(points);
         CPtrArray pointers;
         pointers.Add(&point);
         return points.GetUpperBound() == 7 && points.ElementAt(7) == CPoint(3, 4) && pointers[0] == &point;
     }},
    {"CMap",
     [] {
         CMap<CString, LPCTSTR, int, int> map;
         map.SetAt(_T("one"), 1);
         map[_T("two")] = 2;
         int value = 0, sum = 0;
         CString key;
         for (POSITION at = map.GetStartPosition(); at != NULL; sum += value)
             map.GetNextAssoc(at, key, value);
         CMapStringToString names;
         names[_T("a")] = _T("b");
         return map.Lookup(_T("two"), value) && value == 2 && !map.Lookup(_T("three"), value) && sum == 3 &&
                map.RemoveKey(_T("one")) && map.GetCount() == 1 && names[_T("a")] == "b";
     }},
    {"CMap by handle",
     [] {
         CMap<HWND, HWND, CString, LPCTSTR> map;
         map[HWND(3, 4)] = _T("x");
         CString value;
         return map.Lookup(HWND(3, 4), value) && value == "x" && !map.Lookup(HWND(3, 5), value);
     }},
    {"CList",
     [] {
         CList<int, int> list;
         list.AddTail(2);
         const POSITION last = list.AddTail(3);
         list.AddHead(1);
         list.InsertBefore(last, 9);
         list.RemoveAt(list.Find(2));
         int digits = 0;
         for (POSITION at = list.GetHeadPosition(); at;)
             digits = digits * 10 + list.GetNext(at);
         return digits == 193 && list.RemoveTail() == 3 && list.GetCount() == 2;
     }},
    {"CTime and CTimeSpan",
     [] {
         const CTime start(2024, 2, 28, 23, 0, 0);
         const CTime end = start + CTimeSpan(1, 2, 3, 4);
         const CTimeSpan between = end - start;
         return end.Format(_T("%Y-%m-%d %H:%M:%S")) == "2024-03-01 01:03:04" && end.GetDayOfWeek() == 6 &&
                between.Format(_T("%D.%H:%M:%S")) == "1.02:03:04" && between.GetTotalHours() == 26 &&
                start < end && CTime::GetCurrentTime() > end;
     }},
    {"checks and messages",
     [] {
         int calls = 0;
         ASSERT(calls == 0);
         VERIFY(++calls == 1);
         TRACE(_T("%s %d\n"), CString("traced"), 1);
         TRACE("%s %d\n", "bytes", 2);
         return calls == 1;
     }},
    {"waiting",
     [] {
         SYSTEMTIME now;
         GetLocalTime(&now);
         Sleep(1);
         return now.wYear >= 2024 && now.wMonth >= 1 && now.wMonth <= 12;
     }},
};

INSTANTIATE_TEST_SUITE_P(Porting, Values, testing::ValuesIn(kIdioms), [](const auto& one) {
    std::string name = one.param.name;
    std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
    return name;
});

TEST(Values, PositionsOutsideRaise) {
    CList<int, int> list;
    EXPECT_THROW(list.GetHead(), CInvalidArgException);
    POSITION none = nullptr;
    EXPECT_THROW(list.GetNext(none), CInvalidArgException);
    EXPECT_THROW(CTime(2024, 13, 1, 0, 0, 0), CInvalidArgException);
}

}  // namespace
