#include "editor/RecoveryQuestion.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>

#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"

namespace QuillmereEngine { namespace {

struct RecoveryQuestionTest: ::testing::Test {
    RecoveryQuestionTest() {
        question.ask();
        input.idle(3);
    }

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::Begin("Behind");
        isBehindPressed |= ImGui::Button("Button", {200.0f, 200.0f});
        ImGui::End();
        const RecoveryAnswer answer = question.draw("game.json", 3);
        if(answer != RecoveryAnswer::None)
            answers.push_back(answer);
    }

    /* The buttons are below the text, so the last place with the word is the button's */
    ImVec2 button(const std::string& label) {
        const std::optional<ImVec2> out = Testing::placeOfText(label, "Recover changes");
        EXPECT_TRUE(out) << label;
        return out.value_or(ImVec2{});
    }

    Testing::HeadlessFrame frame;
    Testing::InputDriver input{frame, [this] { draw(); }};
    RecoveryQuestion question;
    std::vector<RecoveryAnswer> answers;
    bool isBehindPressed = false;
};

TEST_F(RecoveryQuestionTest, ShowsHowMuchIsOffered) {
    const auto texts = Testing::drawnTexts("Recover changes");
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [](const auto& text) {
        return text.text == "Theeditorendedbefore3changesofgame.jsonweresaved.";
    }));
    EXPECT_TRUE(question.isAsked());
    EXPECT_TRUE(answers.empty());
}

TEST_F(RecoveryQuestionTest, EachButtonAnswersOnceAndEndsTheQuestion) {
    constexpr struct {
        const char* label;
        RecoveryAnswer answer;
    } Buttons[]{{"Recover", RecoveryAnswer::Recover}, {"Discard", RecoveryAnswer::Discard},
        {"Keepforlater", RecoveryAnswer::Keep}};
    for(const auto& row: Buttons) {
        answers.clear();
        question.ask();
        input.idle(3);
        input.click(button(row.label));
        EXPECT_EQ(answers, std::vector<RecoveryAnswer>{row.answer}) << row.label;
        EXPECT_FALSE(question.isAsked());
        EXPECT_TRUE(Testing::drawnTexts("Recover changes").empty());
    }
}

TEST_F(RecoveryQuestionTest, KeysAnswer) {
    input.type(ImGuiKey_Escape);
    EXPECT_EQ(answers, std::vector<RecoveryAnswer>{RecoveryAnswer::Keep});
    question.ask();
    input.idle(3);
    input.type(ImGuiKey_Enter);
    EXPECT_EQ(answers.back(), RecoveryAnswer::Recover);
}

TEST_F(RecoveryQuestionTest, NothingBehindItIsReached) {
    input.click({50.0f, 50.0f});
    EXPECT_FALSE(isBehindPressed);
    EXPECT_TRUE(question.isAsked());
    input.type(ImGuiKey_Escape);
    input.click({50.0f, 50.0f});
    EXPECT_TRUE(isBehindPressed);
}

}}
