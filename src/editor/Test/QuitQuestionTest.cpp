#include "editor/QuitQuestion.h"

#include <vector>

#include "questionFixture.h"

namespace QuillmereEngine { namespace {

struct QuitQuestionTest: QuestionFixture {
    QuitQuestionTest() {
        title = "Unsaved changes";
        drawQuestion = [this] {
            const QuitAnswer answer = question.draw("game.json");
            if(answer != QuitAnswer::None)
                answers.push_back(answer);
        };
        ask();
    }

    void ask() {
        answers.clear();
        question.ask();
        input.idle(3);
    }

    QuitQuestion question;
    std::vector<QuitAnswer> answers;
};

TEST_F(QuitQuestionTest, ShowsWhatChanged) {
    EXPECT_TRUE(isShown("Savethechangestogame.json?"));
    EXPECT_TRUE(question.isAsked());
    EXPECT_TRUE(answers.empty());
}

TEST_F(QuitQuestionTest, EachButtonIsItsAnswer) {
    constexpr struct {
        const char* label;
        QuitAnswer answer;
    } Buttons[]{{"Save", QuitAnswer::Save}, {"Discard", QuitAnswer::Discard},
        {"Cancel", QuitAnswer::Cancel}};
    for(const auto& button: Buttons) {
        ask();
        click(button.label);
        EXPECT_EQ(answers, std::vector<QuitAnswer>{button.answer}) << button.label;
        EXPECT_FALSE(question.isAsked());
    }
}

}}
