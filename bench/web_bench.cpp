// Whole answers as text, beside libcurl alone putting the same answer into a std::string, taken in turns. The
// server is a thread of this program; it stands in as the proxy, so that no port has to be free.
#include <curl/curl.h>

#include <qkui/web/base_functions.h>
#include <cstdlib>
#include <string>

#include "bench/paired.h"
#include "tests/web/test_server.h"

namespace {

using bench::Clock;

constexpr const char* kAddress = "http://host.invalid/body";

double Ours(std::size_t size, int charset) {
    const auto start = Clock::now();
    CString response;
    const DWORD result = QKBaseFunctions().WebGet(kAddress, response, charset);
    const std::size_t units = charset == 1 ? size / 2 : size;
    if (result != 1 || static_cast<std::size_t>(response.GetLength()) != units) std::abort();
    return bench::Seconds(start);
}

std::size_t Append(char* bytes, std::size_t, std::size_t count, void* text) {
    static_cast<std::string*>(text)->append(bytes, count);
    return count;
}

double Alone(std::size_t size) {
    const auto start = Clock::now();
    std::string text;
    CURL* const curl = curl_easy_init();
    curl_easy_setopt(curl, CURLOPT_URL, kAddress);
    curl_easy_setopt(curl, CURLOPT_POSTFIELDS, "");
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &text);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &Append);
    if (curl_easy_perform(curl) != CURLE_OK || text.size() != size) std::abort();
    curl_easy_cleanup(curl);
    return bench::Seconds(start);
}

void WebGet(benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range(0));
    const auto charset = static_cast<int>(state.range(1));
    kit::TestServer server;
    server.Play([size](const kit::Wire& wire) {
        wire.Send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(size) + "\r\n\r\n");
        wire.SendBody(size);
    });
    setenv("http_proxy", ("http://127.0.0.1:" + std::to_string(server.Port())).c_str(), 1);
    Alone(size);
    Ours(size, charset);
    std::vector<double> ours, alone;
    for (auto _ : state) {
        alone.push_back(Alone(size));
        ours.push_back(Ours(size, charset));
        state.SetIterationTime(ours.back());
    }
    state.counters["median_ms"] = bench::Median(ours) * 1e3;
    state.counters["libcurl_ms"] = bench::Median(alone) * 1e3;
    state.counters["x_libcurl"] = bench::Median(ours) / bench::Median(alone);
}

// Bytes of the body, and nCharset.
BENCHMARK(WebGet)
    ->ArgsProduct({{1'000'000, 100'000'000}, {0, 1, 2}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// Each request looks into the user's settings: into some of its own.
[[maybe_unused]] const int settings = setenv("XDG_CONFIG_HOME", QKUI_BENCH_OUTPUT "/config", 1);

}  // namespace

BENCHMARK_MAIN();
