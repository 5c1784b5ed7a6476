#ifndef Quillmere_editor_Test_questionFixture_h
#define Quillmere_editor_Test_questionFixture_h

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <imgui.h>

#include "testing/HeadlessFrameDrawing.h"
#include "testing/InputDriver.h"

namespace QuillmereEngine {

/** @brief A modal question in front of a window with a button */
struct QuestionFixture: ::testing::Test {
    /** @brief Draws the question and notes its answer, set by the test */
    std::function<void()> drawQuestion;

    /** @brief Title of the question's window, set by the test */
    std::string title;

    void draw() {
        ImGui::SetNextWindowPos({0.0f, 0.0f});
        ImGui::Begin("Behind");
        isBehindPressed |= ImGui::Button("Button", {200.0f, 200.0f});
        ImGui::End();
        drawQuestion();
    }

    /** @brief Click a button. They are below the text, so the last place with the word is one's. */
    void click(const char* const label) {
        const std::optional<ImVec2> place = Testing::placeOfText(label, title.c_str());
        ASSERT_TRUE(place) << label;
        input.click(*place);
    }

    /** @brief Whether a line with these glyphs is shown, spaces left out */
    bool isShown(const std::string& glyphs) const {
        for(const auto& text: Testing::drawnTexts(title.c_str()))
            if(text.text == glyphs)
                return true;
        return false;
    }

    Testing::HeadlessFrame frame;
    Testing::InputDriver input{frame, [this] { draw(); }};
    bool isBehindPressed = false;
};

/** @brief A question of a kind of its own, whose answers are an enumeration with None */
template<class Question, class Answer> struct AnswerFixture: QuestionFixture {
    /** @brief Begin to ask, after which nothing was answered */
    void ask() {
        answers.clear();
        question.ask();
        input.idle(3);
    }

    /** @brief Note what a call of the question's draw() gave */
    void note(const Answer answer) {
        if(answer != Answer::None)
            answers.push_back(answer);
    }

    /** @brief Ask, press a button, and expect its answer once and the question to have ended */
    void expectAnswer(const char* const label, const Answer answer) {
        ask();
        click(label);
        EXPECT_EQ(answers, std::vector<Answer>{answer}) << label;
        EXPECT_FALSE(question.isAsked()) << label;
    }

    Question question;
    std::vector<Answer> answers;
};

}

#endif
