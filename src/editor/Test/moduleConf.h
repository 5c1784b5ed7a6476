#ifndef Quillmere_editor_Test_moduleConf_h
#define Quillmere_editor_Test_moduleConf_h

#include <string>

#include <gtest/gtest.h>

#include "editor/sha256.h"

namespace QuillmereEngine {

/** @brief The `.conf` of a module with another value of a key. A missing key fails the test. */
inline std::string withValue(std::string conf, const std::string& key, const std::string& value) {
    const std::size_t begin = conf.find("\n" + key + "=");
    EXPECT_NE(begin, std::string::npos) << key;
    const std::size_t end = conf.find('\n', begin + 1);
    return conf.replace(begin, end - begin, "\n" + key + "=" + value);
}

/** @brief The `.conf` of a module that claims to be of another file */
inline std::string fittingTo(const std::string& library, std::string conf) {
    conf = withValue(std::move(conf), "size", std::to_string(library.size()));
    return withValue(std::move(conf), "sha256", sha256(library));
}

}

#endif
