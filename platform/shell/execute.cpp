// Opening what belongs to another program.
#include <string>
#include <vector>

#include <platform/shell.h>
#include <platform/text.h>

#include "platform/shell/gobject.h"

namespace {

using platform::GText;

constexpr INT_PTR kDone = 33;

bool HasScheme(const std::string& name) {
    const GText scheme(g_uri_parse_scheme(name.c_str()));
    return scheme && std::char_traits<char>::length(scheme.get()) > 1;  // C: is none
}

// The path of a file; empty where there is none.
std::string FindFile(const std::string& name, const std::string& folder) {
    const GText path(g_canonicalize_filename(name.c_str(), folder.empty() ? nullptr : folder.c_str()));
    if (g_file_test(path.get(), G_FILE_TEST_EXISTS)) return path.get();
    const GText program(name.find('/') == std::string::npos ? g_find_program_in_path(name.c_str()) : nullptr);
    return program ? program.get() : std::string();
}

bool IsProgram(const std::string& path) {
    return g_file_test(path.c_str(), G_FILE_TEST_IS_EXECUTABLE) &&
           !g_file_test(path.c_str(), G_FILE_TEST_IS_DIR);
}

INT_PTR Start(const std::string& path, const std::string& parameters, const std::string& folder) {
    char** words = nullptr;
    int count = 0;
    if (!parameters.empty()) g_shell_parse_argv(parameters.c_str(), &count, &words, nullptr);
    std::vector<char*> arguments{const_cast<char*>(path.c_str())};
    arguments.insert(arguments.end(), words, words + count);
    arguments.push_back(nullptr);
    const bool started = g_spawn_async(folder.empty() ? nullptr : folder.c_str(), arguments.data(), nullptr,
                                       G_SPAWN_DEFAULT, nullptr, nullptr, nullptr, nullptr) != FALSE;
    g_strfreev(words);
    return started ? kDone : INT_PTR{SE_ERR_ACCESSDENIED};
}

INT_PTR Open(const std::string& uri) {
    const bool opened = g_app_info_launch_default_for_uri(uri.c_str(), nullptr, nullptr) != FALSE;
    return opened ? kDone : INT_PTR{SE_ERR_NOASSOC};
}

INT_PTR Execute(LPCWSTR verb, const std::string& name, const std::string& parameters,
                const std::string& folder) {
    if (verb && CString(verb).CompareNoCase(u"open") != 0) return SE_ERR_NOASSOC;
    if (HasScheme(name)) return Open(name);
    const std::string path = name.empty() ? std::string() : FindFile(name, folder);
    if (path.empty()) return SE_ERR_FNF;
    if (IsProgram(path)) return Start(path, parameters, folder);
    const GText uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
    return uri ? Open(uri.get()) : INT_PTR{SE_ERR_FNF};
}

}  // namespace

HINSTANCE ShellExecuteW(HWND, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR folder, int) {
    return HINSTANCE(Execute(verb, ToUtf8(file), ToUtf8(parameters), ToUtf8(folder)));
}
