#include "platform/html/webkit/frame_script.h"

#include <jsc/jsc.h>

#include "platform/html/webkit/owned.h"

namespace platform::html {

namespace {

constexpr const char* kWorld = "page-host";
constexpr const char* kScript = R"js(
(() => {
    const tell = (kind, text) => window.webkit.messageHandlers.frames.postMessage([kind, path, text]);
    let path = '';
    for (let frame = window; frame !== frame.parent; frame = frame.parent) {
        const siblings = frame.parent.frames;
        let index = 0;
        while (index < siblings.length && siblings[index] !== frame)
            ++index;
        path = path === '' ? String(index) : index + '.' + path;
    }
    if (path !== '') {
        tell('committed', location.href);
        addEventListener('load', () => tell('loaded', location.href));
    } else {
        addEventListener('load', () => tell('titled', document.title));
    }
    addEventListener('click', (event) => {
        const link = event.composedPath().find((node) => node.href !== undefined && node.getAttribute);
        if (link) tell('clicked', link.getAttribute('href') || '');
    }, true);
})();
)js";

std::string TextAt(JSCValue* array, guint index) {
    const Owned<JSCValue> item(jsc_value_object_get_property_at_index(array, index));
    const OwnedText text(jsc_value_to_string(item.get()));
    return Text(text.get());
}

using Listener = std::function<void(const FrameNews&)>;

void OnMessage(WebKitUserContentManager*, WebKitJavascriptResult* result, gpointer data) noexcept {
    JSCValue* const message = webkit_javascript_result_get_js_value(result);
    if (!jsc_value_is_array(message)) return;
    const std::string kind = TextAt(message, 0);
    FrameNews news{FrameNews::Kind::Committed, TextAt(message, 1), TextAt(message, 2)};
    if (kind == "loaded") news.kind = FrameNews::Kind::Loaded;
    if (kind == "titled") news.kind = FrameNews::Kind::Titled;
    if (kind == "clicked") news.kind = FrameNews::Kind::Clicked;
    // The handler may take itself away.
    const Listener listener = *static_cast<Listener*>(data);
    listener(news);
}

}  // namespace

gulong WatchFrames(WebKitUserContentManager* manager, Listener received) {
    auto* const listener = new Listener(std::move(received));
    const gulong handler = g_signal_connect_data(
        manager, "script-message-received::frames", G_CALLBACK(OnMessage), listener,
        [](gpointer data, GClosure*) { delete static_cast<Listener*>(data); }, GConnectFlags{});
    webkit_user_content_manager_register_script_message_handler_in_world(manager, "frames", kWorld);
    WebKitUserScript* const script = webkit_user_script_new_for_world(
        kScript, WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, kWorld,
        nullptr, nullptr);
    webkit_user_content_manager_add_script(manager, script);
    webkit_user_script_unref(script);
    return handler;
}

}  // namespace platform::html
