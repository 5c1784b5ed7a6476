#include "editor/RecoveryQuestion.h"

#include "questionFixture.h"

namespace QuillmereEngine { namespace {

struct RecoveryQuestionTest: AnswerFixture<RecoveryQuestion, RecoveryAnswer> {
    RecoveryQuestionTest() {
        title = "Recover changes";
        drawQuestion = [this] { note(question.draw("game.json", changeCount)); };
        ask();
    }

    std::size_t changeCount = 3;
};

TEST_F(RecoveryQuestionTest, ShowsHowMuchIsOffered) {
    EXPECT_TRUE(isShown("Theeditorendedbefore3changesofgame.jsonweresaved."));
    EXPECT_TRUE(answers.empty());
    changeCount = 1;
    input.idle(1);
    EXPECT_TRUE(isShown("Theeditorendedbefore1changeofgame.jsonwassaved."));
}

TEST_F(RecoveryQuestionTest, EachButtonIsItsAnswer) {
    expectAnswer("Recover", RecoveryAnswer::Recover);
    expectAnswer("Discard", RecoveryAnswer::Discard);
    expectAnswer("Keepforlater", RecoveryAnswer::Keep);
}

}}
