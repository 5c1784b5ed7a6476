#include "editor/ModalQuestion.h"

#include <vector>

#include "questionFixture.h"

namespace QuillmereEngine { namespace {

struct ModalQuestionTest: QuestionFixture {
    ModalQuestionTest() {
        title = "Title";
        drawQuestion = [this] {
            if(const auto answer = question.draw("Is %s so?", "It may be."))
                answers.push_back(*answer);
        };
        ask();
    }

    void ask() {
        answers.clear();
        question.ask();
        input.idle(3);
    }

    ModalQuestion question{"Title", {"Yes", "No", "Perhaps"}, 6.0f};
    std::vector<std::size_t> answers;
};

TEST_F(ModalQuestionTest, ShowsQuestionAndHint) {
    EXPECT_TRUE(isShown("Is%sso?"));
    EXPECT_TRUE(isShown("Itmaybe."));
    EXPECT_TRUE(question.isAsked());
    EXPECT_TRUE(answers.empty());
}

TEST_F(ModalQuestionTest, EachButtonAnswersOnceAndEndsTheQuestion) {
    constexpr const char* Labels[]{"Yes", "No", "Perhaps"};
    for(std::size_t i = 0; i != 3; ++i) {
        ask();
        click(Labels[i]);
        input.idle(2);
        EXPECT_EQ(answers, std::vector<std::size_t>{i});
        EXPECT_FALSE(question.isAsked());
        EXPECT_TRUE(Testing::drawnTexts("Title").empty());
    }
}

TEST_F(ModalQuestionTest, EnterIsTheFirstAnswerAndEscapeTheLast) {
    input.type(ImGuiKey_Escape);
    EXPECT_EQ(answers, std::vector<std::size_t>{2});
    for(const ImGuiKey key: {ImGuiKey_Enter, ImGuiKey_KeyPadEnter}) {
        ask();
        input.type(key);
        EXPECT_EQ(answers, std::vector<std::size_t>{0});
    }
}

TEST_F(ModalQuestionTest, NothingBehindItIsReached) {
    input.click({50.0f, 50.0f});
    EXPECT_FALSE(isBehindPressed);
    EXPECT_TRUE(question.isAsked());
    input.type(ImGuiKey_Escape);
    input.click({50.0f, 50.0f});
    EXPECT_TRUE(isBehindPressed);
}

}}
