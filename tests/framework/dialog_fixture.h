// A dialog that can be told what to do, and a way to act while it blocks.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <platform/framework.h>
#include <platform/headless.h>

#include "support/resource.h"

constexpr UINT PlainTemplate = 101;

class ScriptedDialog : public CDialog {
    DECLARE_DYNAMIC(ScriptedDialog)
  public:
    using CDialog::CDialog;
    std::function<void()> onInit;
    std::function<void()> onOK;
    bool deletesItself = false;
    int inits = 0;
    int timers = 0;

    BOOL OnInitDialog() override {
        ++inits;
        CDialog::OnInitDialog();
        if (onInit) onInit();
        return TRUE;
    }

  protected:
    void OnOK() override {
        if (onOK) return onOK();
        CDialog::OnOK();
    }
    void OnTimer(UINT_PTR) {
        ++timers;
        EndDialog(900);
    }
    LRESULT OnDestroyYourself(WPARAM, LPARAM) { return DestroyWindow(); }
    LRESULT OnDeleteYourself(WPARAM, LPARAM) {
        delete this;
        return 0;
    }
    void PostNcDestroy() override {
        if (deletesItself) delete this;
    }
    DECLARE_MESSAGE_MAP()
};

constexpr UINT DestroyYourself = WM_APP + 1;
constexpr UINT DeleteYourself = WM_APP + 2;

class DialogTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(Headless::Use(1280, 800));
        Headless::RunPending();
    }
    void TearDown() override {
        EXPECT_FALSE(TakeQuit()) << "a test left WM_QUIT behind";
        module_.reset();
    }

    // Runs from the next wait of a loop that has nothing else to do; one step per wait.
    static void WhenIdle(std::function<void()> step) {
        auto* const owned = new std::function<void()>(std::move(step));
        Headless::WhenIdle(
            [](void* argument) {
                const std::unique_ptr<std::function<void()>> mine(
                    static_cast<std::function<void()>*>(argument));
                (*mine)();
            },
            owned);
    }
    // Empties the queue; the exit code when WM_QUIT was in it.
    static std::optional<int> TakeQuit() {
        MSG message{};
        while (PeekMessageW(&message, {}, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) return static_cast<int>(message.wParam);
            DispatchMessageW(&message);
        }
        return std::nullopt;
    }
    static void Press(UINT key) {
        Headless::KeyDown(key);
        Headless::KeyUp(key);
    }

    void UseTemplates(const std::vector<std::pair<unsigned, kit::Bytes>>& templates) {
        module_.reset();
        module_ = std::make_unique<kit::ResourceModule>(templates);
    }
    void UsePlainTemplate(DWORD extraStyle = 0) {
        kit::Template dialog;
        dialog.style |= extraStyle;
        UseTemplates({{PlainTemplate, kit::Pack(dialog)}});
    }

    std::unique_ptr<kit::ResourceModule> module_;
};
