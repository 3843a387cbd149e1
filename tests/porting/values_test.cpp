// Texts, rectangles, collections and times, as programs use them.
#include <afxwin.h>
#include <tchar.h>

#include <gtest/gtest.h>

#include "resource.h"

namespace {

TEST(Values, TextsOfEveryOrigin) {
    CString text = _T("ab");
    EXPECT_TRUE(text == "ab" && L"ab" == text && text != _T("b") && text < L"b" && text >= "ab");
    EXPECT_TRUE(_T("b") > text);
    EXPECT_EQ(CString(std::string("a\xC3\xA4")), u"a\u00E4");
    EXPECT_TRUE(CString(_T('x')) == "x" && CString() == static_cast<LPCTSTR>(NULL));
    text = "a";
    text = _T('<') + text + L"b" + 'c' + _T("d") + u'>';
    EXPECT_EQ(text, "<abcd>");
    EXPECT_EQ(std::string("x") + ToUtf8(text), "x<abcd>");
}

CString Formatted(LPCTSTR format, int number) {
    CString text;
    text.Format(format, number);
    return text;
}

TEST(Values, FormatsAndTheTableOfTexts) {
    CString text(_T("x"));
    text.Format(_T("%s-%s-%S-%5.2f|%-3d|%I64d"), text, L"wide", "bytes", 1.5, 7, INT64{1} << 40);
    EXPECT_EQ(text, "x-wide-bytes- 1.50|7  |1099511627776");
    text = _T("a");
    text.AppendFormat(L"%c%03d", L'b', 5);
    text.AppendFormat(_T("%%"));
    EXPECT_EQ(text, "ab005%");
    EXPECT_EQ(Formatted(_T("%X"), 255), "FF");
    EXPECT_EQ(Formatted(_T("%128d"), 7).Right(2), " 7");
    text.Format(IDS_FORMAT, 3, _T("9"));
    EXPECT_EQ(text, "3 of 9");
    TCHAR cut[4];
    EXPECT_EQ(::LoadString(AfxGetInstanceHandle(), IDS_FORMAT, cut, 4), 3);
    EXPECT_EQ(CString(cut), "%d ");
    EXPECT_TRUE(text.LoadString(IDS_ABOUT) && text == "&About \"Host\"...");
    EXPECT_FALSE(text.LoadString(999));
    EXPECT_TRUE(text.IsEmpty());
}

TEST(Values, TextsTakenApart) {
    CString text = _T(",one,,two;three");
    CString all;
    int from = 0;
    for (CString part = text.Tokenize(_T(",;"), from); from != -1; part = text.Tokenize(_T(",;"), from))
        all += _T("[") + part + _T("]");
    EXPECT_EQ(all, "[one][two][three]");
    EXPECT_TRUE(text.Tokenize(_T(","), from).IsEmpty());
    text = _T("12ab12");
    EXPECT_EQ(text.SpanIncluding(_T("0123456789")), "12");
    EXPECT_EQ(text.SpanExcluding(_T("abc")), "12");
    EXPECT_TRUE(text.FindOneOf(_T("ba")) == 2 && text.FindOneOf(_T("z")) == -1 && text.Find("ab") == 2);
    text = _T(" --a- ");
    EXPECT_EQ(CString(text).Trim(), "--a-");
    EXPECT_EQ(CString(text).Trim(_T(" -")), "a");
    EXPECT_EQ(text.TrimLeft().TrimLeft('-'), "a- ");
    EXPECT_EQ(text.TrimRight(_T("- ")), "a");
}

TEST(Values, TextsChangedInPlace) {
    CString text = _T("abcabc");
    EXPECT_TRUE(text.Insert(99, _T("!")) == 7 && text.Insert(-1, 'x') == 8);
    EXPECT_TRUE(text.Delete(1, 2) == 6 && text.Remove('a') == 1 && text.Replace('c', 'd') == 2);
    EXPECT_EQ(text.Delete(9), 5);
    EXPECT_EQ(text, "xdbd!");
    LPTSTR units = text.GetBufferSetLength(3);
    units[0] = 'a', units[1] = 'b', units[2] = 'c';
    text.ReleaseBuffer(2);
    CString turned(text);
    turned.MakeReverse().MakeUpper();
    EXPECT_EQ(turned, "BA");
    text.Truncate(1);
    EXPECT_EQ(text, "a");
}

TEST(Values, RectanglesAndHandles) {
    CRect a(0, 0, 10, 10), result;
    RECT b = {5, 5, 20, 20};
    result.IntersectRect(&a, &b);
    EXPECT_EQ(result, CRect(5, 5, 10, 10));
    result.UnionRect(a, &b);
    EXPECT_EQ(result, CRect(CPoint(0, 0), CPoint(20, 20)));
    ::OffsetRect(&b, 1, 1);
    EXPECT_TRUE(b.left == 6 && ::PtInRect(&b, CPoint(6, 6)) && !::IsRectEmpty(&b));
    EXPECT_TRUE(::EqualRect(a, CRect(&a)) && (a & CRect(&b)) == CRect(6, 6, 10, 10));
    a.SetRect(1, 2, 11, 12);
    a.MoveToXY(CPoint(5, 5));
    a.InflateRect(1, 2, 3, 4);
    a += CPoint(1, 1);
    EXPECT_EQ(a, CRect(5, 4, 19, 20));
    result.SubtractRect(&a, CRect(0, 0, 99, 10));
    EXPECT_EQ(result, CRect(5, 10, 19, 20));
    EXPECT_TRUE(CPoint(3, 4) + CSize(1, 1) == CPoint(4, 5) && CPoint(3, 4) - CPoint(1, 1) == CSize(2, 3));
    // As parameters and numbers.
    const HICON icon(7, 9);
    HWND none = NULL;
    const LPARAM packed = (LPARAM)icon;
    EXPECT_TRUE((HICON)packed == icon && none == NULL && (WPARAM)none == 0 && HIWORD(MAKELONG(1, 2)) == 2);
}

TEST(Values, Collections) {
    CArray<CPoint, CPoint&> points;
    CPoint point(1, 2);
    points.Add(point);
    points.SetAtGrow(3, CPoint(3, 4));
    points.Append(points);
    CPtrArray pointers;
    pointers.Add(&point);
    EXPECT_TRUE(points.GetUpperBound() == 7 && points.ElementAt(7) == CPoint(3, 4) && pointers[0] == &point);

    CList<int, int> list;
    EXPECT_THROW(list.GetHead(), CInvalidArgException);
    POSITION at = nullptr;
    EXPECT_THROW(list.GetNext(at), CInvalidArgException);
    list.AddTail(2);
    const POSITION last = list.AddTail(3);
    list.AddHead(1);
    list.InsertBefore(last, 9);
    list.RemoveAt(list.Find(2));
    int digits = 0;
    for (at = list.GetHeadPosition(); at;)
        digits = digits * 10 + list.GetNext(at);
    EXPECT_TRUE(digits == 193 && list.RemoveTail() == 3 && list.GetCount() == 2);
}

TEST(Values, Maps) {
    CMap<CString, LPCTSTR, int, int> map;
    map.SetAt(_T("one"), 1);
    map[_T("two")] = 2;
    int value = 0, sum = 0;
    CString key;
    for (POSITION at = map.GetStartPosition(); at != NULL; sum += value)
        map.GetNextAssoc(at, key, value);
    EXPECT_EQ(sum, 3);
    EXPECT_TRUE(map.Lookup(_T("two"), value) && value == 2 && !map.Lookup(_T("three"), value));
    EXPECT_TRUE(map.RemoveKey(_T("one")) && map.GetCount() == 1);
    CMapStringToString names;
    names[_T("a")] = _T("b");
    EXPECT_EQ(names[_T("a")], "b");
    CMap<HWND, HWND, CString, LPCTSTR> windows;
    windows[HWND(3, 4)] = _T("x");
    EXPECT_TRUE(windows.Lookup(HWND(3, 4), key) && key == "x" && !windows.Lookup(HWND(3, 5), key));
}

TEST(Values, Times) {
    const CTime start(2024, 2, 28, 23, 0, 0);
    const CTime end = start + CTimeSpan(1, 2, 3, 4);
    const CTimeSpan between = end - start;
    EXPECT_EQ(end.Format(_T("%Y-%m-%d %H:%M:%S")), "2024-03-01 01:03:04");
    EXPECT_EQ(between.Format(_T("%D.%H:%M:%S")), "1.02:03:04");
    EXPECT_TRUE(end.GetDayOfWeek() == 6 && between.GetTotalHours() == 26);
    EXPECT_TRUE(start < end && CTime::GetCurrentTime() > end);
    EXPECT_THROW(CTime(2024, 13, 1, 0, 0, 0), CInvalidArgException);
    SYSTEMTIME now;
    GetLocalTime(&now);
    Sleep(1);
    EXPECT_TRUE(now.wYear >= 2024 && now.wMonth >= 1 && now.wMonth <= 12);
}

TEST(Values, ChecksAndTraces) {
    int calls = 0;
    ASSERT(calls == 0);
    VERIFY(++calls == 1);
    TRACE(_T("%s %d\n"), CString("traced"), 1);
    TRACE("%s %d\n", "bytes", 2);
    EXPECT_EQ(calls, 1);
}

}  // namespace
