#include "editor/QuitQuestion.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>

#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"

namespace QuillmereEngine { namespace {

struct QuitQuestionTest: ::testing::Test {
    QuitQuestionTest() {
        question.ask();
        input.idle(3);
    }

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::Begin("Behind");
        isBehindPressed |= ImGui::Button("Button", {200.0f, 200.0f});
        ImGui::End();
        const QuitAnswer answer = question.draw("game.json");
        if(answer != QuitAnswer::None)
            answers.push_back(answer);
    }

    /* The buttons are below the text, so the last place with the word is the button's */
    ImVec2 button(const std::string& label) {
        const std::optional<ImVec2> out = Testing::placeOfText(label, "Unsaved changes");
        EXPECT_TRUE(out) << label;
        return out.value_or(ImVec2{});
    }

    Testing::HeadlessFrame frame;
    Testing::InputDriver input{frame, [this] { draw(); }};
    QuitQuestion question;
    std::vector<QuitAnswer> answers;
    bool isBehindPressed = false;
};

TEST_F(QuitQuestionTest, ShowsWhatChanged) {
    const auto texts = Testing::drawnTexts("Unsaved changes");
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(),
        [](const auto& text) { return text.text == "Savethechangestogame.json?"; }));
    EXPECT_TRUE(question.isAsked());
    EXPECT_TRUE(answers.empty());
}

TEST_F(QuitQuestionTest, EachButtonAnswersOnceAndEndsTheQuestion) {
    constexpr struct {
        const char* label;
        QuitAnswer answer;
    } Buttons[]{{"Save", QuitAnswer::Save}, {"Discard", QuitAnswer::Discard},
        {"Cancel", QuitAnswer::Cancel}};
    for(const auto& row: Buttons) {
        answers.clear();
        question.ask();
        input.idle(3);
        input.click(button(row.label));
        EXPECT_EQ(answers, std::vector<QuitAnswer>{row.answer}) << row.label;
        EXPECT_FALSE(question.isAsked());
        EXPECT_TRUE(Testing::drawnTexts("Unsaved changes").empty());
    }
}

TEST_F(QuitQuestionTest, KeysAnswer) {
    input.type(ImGuiKey_Escape);
    EXPECT_EQ(answers, std::vector<QuitAnswer>{QuitAnswer::Cancel});
    question.ask();
    input.idle(3);
    input.type(ImGuiKey_Enter);
    EXPECT_EQ(answers.back(), QuitAnswer::Save);
}

TEST_F(QuitQuestionTest, NothingBehindItIsReached) {
    input.click({50.0f, 50.0f});
    EXPECT_FALSE(isBehindPressed);
    EXPECT_TRUE(question.isAsked());
    input.type(ImGuiKey_Escape);
    input.click({50.0f, 50.0f});
    EXPECT_TRUE(isBehindPressed);
}

}}
