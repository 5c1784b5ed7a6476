#include "editor/RecoveryQuestion.h"

#include <vector>

#include "questionFixture.h"

namespace QuillmereEngine { namespace {

struct RecoveryQuestionTest: QuestionFixture {
    RecoveryQuestionTest() {
        title = "Recover changes";
        drawQuestion = [this] {
            const RecoveryAnswer answer = question.draw("game.json", changeCount);
            if(answer != RecoveryAnswer::None)
                answers.push_back(answer);
        };
        ask();
    }

    void ask() {
        answers.clear();
        question.ask();
        input.idle(3);
    }

    RecoveryQuestion question;
    std::vector<RecoveryAnswer> answers;
    std::size_t changeCount = 3;
};

TEST_F(RecoveryQuestionTest, ShowsHowMuchIsOffered) {
    EXPECT_TRUE(isShown("Theeditorendedbefore3changesofgame.jsonweresaved."));
    EXPECT_TRUE(question.isAsked());
    EXPECT_TRUE(answers.empty());
    changeCount = 1;
    input.idle(1);
    EXPECT_TRUE(isShown("Theeditorendedbefore1changeofgame.jsonwassaved."));
}

TEST_F(RecoveryQuestionTest, EachButtonIsItsAnswer) {
    constexpr struct {
        const char* label;
        RecoveryAnswer answer;
    } Buttons[]{{"Recover", RecoveryAnswer::Recover}, {"Discard", RecoveryAnswer::Discard},
        {"Keepforlater", RecoveryAnswer::Keep}};
    for(const auto& button: Buttons) {
        ask();
        click(button.label);
        EXPECT_EQ(answers, std::vector<RecoveryAnswer>{button.answer}) << button.label;
        EXPECT_FALSE(question.isAsked());
    }
}

}}
