#include "editor/QuitQuestion.h"

#include "questionFixture.h"

namespace QuillmereEngine { namespace {

struct QuitQuestionTest: AnswerFixture<QuitQuestion, QuitAnswer> {
    QuitQuestionTest() {
        title = "Unsaved changes";
        drawQuestion = [this] { note(question.draw("game.json")); };
        ask();
    }
};

TEST_F(QuitQuestionTest, ShowsWhatChanged) {
    EXPECT_TRUE(isShown("Savethechangestogame.json?"));
    EXPECT_TRUE(answers.empty());
}

TEST_F(QuitQuestionTest, EachButtonIsItsAnswer) {
    expectAnswer("Save", QuitAnswer::Save);
    expectAnswer("Discard", QuitAnswer::Discard);
    expectAnswer("Cancel", QuitAnswer::Cancel);
}

}}
