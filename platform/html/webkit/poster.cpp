#include "platform/html/webkit/poster.h"

#include <string_view>

namespace platform::html {

namespace {

constexpr guint kTimeout = 60;  // seconds without a byte

struct Sending {
    Owned<GCancellable> cancellable;
    Owned<SoupMessage> message;
    Poster::Done done;
};

}  // namespace

void AddHeaders(SoupMessageHeaders* headers, std::string_view lines) {
    while (!lines.empty()) {
        const std::size_t end = lines.find_first_of("\r\n");
        const std::string_view line = lines.substr(0, end);
        lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos || colon == 0) continue;
        const OwnedText value(g_strstrip(g_strdup(std::string(line.substr(colon + 1)).c_str())));
        soup_message_headers_replace(headers, std::string(line.substr(0, colon)).c_str(), value.get());
    }
}

namespace {

void OnAnswer(GObject* session, GAsyncResult* result, gpointer data) noexcept {
    const std::unique_ptr<Sending> sending(static_cast<Sending*>(data));
    GError* error = nullptr;
    GBytes* const body = soup_session_send_and_read_finish(SOUP_SESSION(session), result, &error);
    if (g_cancellable_is_cancelled(sending->cancellable.get())) {
        // Nobody waits any more.
    } else if (!body) {
        sending->done(nullptr, error);
    } else {
        SoupMessage* const message = sending->message.get();
        const OwnedText url(g_uri_to_string(soup_message_get_uri(message)));
        GHashTable* parameters = nullptr;
        const char* const type =
            soup_message_headers_get_content_type(soup_message_get_response_headers(message), &parameters);
        PostAnswer answer{Text(url.get()), static_cast<std::uint32_t>(soup_message_get_status(message)),
                          type ? type : "text/html", "", body};
        if (parameters) {
            answer.encoding = Text(static_cast<const char*>(g_hash_table_lookup(parameters, "charset")));
            g_hash_table_unref(parameters);
        }
        sending->done(&answer, nullptr);
    }
    if (body) g_bytes_unref(body);
    g_clear_error(&error);
}

}  // namespace

bool Poster::Send(const PageRequest& request, Done done) {
    Cancel();
    SoupMessage* const raw = soup_message_new("POST", request.url.c_str());
    if (!raw) return false;
    Owned<SoupMessage> message(raw);
    if (!session_) {
        session_.reset(soup_session_new());
        soup_session_set_timeout(session_.get(), kTimeout);
    }
    SoupMessageHeaders* const headers = soup_message_get_request_headers(raw);
    GBytes* const body = g_bytes_new(request.postedData->data(), request.postedData->size());
    soup_message_set_request_body_from_bytes(raw, "application/x-www-form-urlencoded", body);
    g_bytes_unref(body);
    AddHeaders(headers, request.headers);
    cancellable_.reset(g_cancellable_new());
    auto sending = std::make_unique<Sending>();
    sending->cancellable = Share(cancellable_.get());
    sending->message = std::move(message);
    sending->done = std::move(done);
    soup_session_send_and_read_async(session_.get(), raw, G_PRIORITY_DEFAULT, cancellable_.get(), OnAnswer,
                                     sending.release());
    return true;
}

void Poster::Cancel() {
    if (cancellable_) g_cancellable_cancel(cancellable_.get());
    cancellable_.reset();
}

}  // namespace platform::html
