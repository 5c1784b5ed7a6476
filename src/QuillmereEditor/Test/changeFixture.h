#ifndef Quillmere_QuillmereEditor_Test_changeFixture_h
#define Quillmere_QuillmereEditor_Test_changeFixture_h

#include <sstream>
#include <string>
#include <vector>

#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>

#include "QuillmereEditor/ChangeManager.h"
#include "host/ProjectFile.h"
#include "host/RapidJsonUtils.h"
#include "host/jsonText.h"

namespace QuillmereEngine { namespace Test {

/** @brief A project and its history, with values written as JSON */
class ChangeFixture: public testing::Test {
protected:
    void setDocument(const std::string& json) { *project.document = parsed(json); }

    std::string document() const { return RapidJsonUtils::toJson(*project.document); }

    void push(const char* const path, const std::string& json, const bool merge = false) {
        const rapidjson::Document value = parsed(json);
        manager.pushChange(path, value, merge);
    }

    /** @brief Write down what a handler under @p key hears */
    void listen(const char* const key) {
        manager.addChangeHandler(
            key,
            [this, key](const Change& change,
                const Corrade::Containers::ArrayView<const std::string> path, void*) {
                std::ostringstream out;
                Corrade::Utility::Debug{&out, Corrade::Utility::Debug::Flag::NoNewlineAtTheEnd}
                    << change;
                std::string components;
                for(const std::string& component: path)
                    components += "," + component;
                calls.push_back(std::string{key} + ": " + out.str());
                lastComponents = components;
                lastGroup = change.group;
            },
            nullptr);
    }

    static rapidjson::Document parsed(const std::string& json) {
        rapidjson::Document out;
        JsonTextError error;
        EXPECT_TRUE(parseJson({json.data(), json.size()}, out, error)) << json;
        return out;
    }

    /** @brief What @p call writes to the error output */
    template<class F> static std::string errorsOf(F&& call) {
        std::ostringstream out;
        {
            const Corrade::Utility::Error redirect{
                &out, Corrade::Utility::Error::Flag::NoNewlineAtTheEnd};
            call();
        }
        return out.str();
    }

    ProjectFile project;
    ChangeManager manager{project};
    std::vector<std::string> calls;
    std::string lastComponents;
    int lastGroup = -2;
};

}}

#endif
