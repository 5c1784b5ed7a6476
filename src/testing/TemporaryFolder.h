#ifndef Quillmere_testing_TemporaryFolder_h
#define Quillmere_testing_TemporaryFolder_h

#include <string>
#include <vector>

namespace QuillmereEngine { namespace Testing {

/** @brief A fresh folder that goes, with all in it, at the end of a test */
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /** @brief Absolute path without a slash at its end */
    const std::string& path() const { return _path; }

    /** @brief Absolute path of something in it */
    std::string file(const std::string& name) const { return _path + "/" + name; }

    /** @brief Write a file into it and return its path */
    std::string write(const std::string& name, const std::string& content) const;

    /** @brief The one file in it. Any other number of files fails the test. */
    std::string onlyFile() const;

private:
    std::string _path;
};

/** @brief All bytes of a file. A missing file fails the test. */
std::string readFile(const std::string& path);

/** @brief The lines of a text without their newlines; what follows the last newline is one, too */
std::vector<std::string> linesOf(const std::string& text);

}}

#endif
