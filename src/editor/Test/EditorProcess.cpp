#include "EditorProcess.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#include <stb_image.h>

#include "testing/TemporaryFolder.h"

extern char** environ;

namespace QuillmereEngine {

namespace {

pid_t spawn(const std::vector<std::string>& arguments, const int input, const std::string& out,
    const std::string& error) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    for(const auto& [descriptor, path]: {std::pair{STDOUT_FILENO, out}, {STDERR_FILENO, error}})
        posix_spawn_file_actions_addopen(
            &actions, descriptor, path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);

    std::vector<char*> argv;
    for(const std::string& argument: arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t process = 0;
    EXPECT_EQ(posix_spawn(&process, argv[0], &actions, nullptr, argv.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

/* The program may end without reading all of it */
void writeAll(const int descriptor, const std::string& text) {
    for(std::size_t i = 0; i < text.size();) {
        const ssize_t size = write(descriptor, text.data() + i, text.size() - i);
        if(size <= 0)
            return;
        i += std::size_t(size);
    }
}

}

EditorRun runEditorProgram(
    std::vector<std::string> arguments, const std::string& input, const WindowMode mode) {
    if(mode == WindowMode::Headless)
        arguments.insert(arguments.begin(), "--headless");
    arguments.insert(arguments.begin(), QUILLMERE_EDITOR_PROGRAM);
    const Testing::TemporaryFolder folder;
    std::array<int, 2> pipe;
    EXPECT_EQ(pipe2(pipe.data(), O_CLOEXEC), 0);
    std::signal(SIGPIPE, SIG_IGN);
    const pid_t process = spawn(arguments, pipe[0], folder.file("out"), folder.file("error"));
    close(pipe[0]);
    writeAll(pipe[1], input);
    close(pipe[1]);

    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status),
        Testing::readFile(folder.file("out")), Testing::readFile(folder.file("error"))};
}

unsigned Picture::at(const int x, const int y) const {
    const unsigned char* const pixel = pixels.data() + std::ptrdiff_t(y * width + x) * channels;
    return unsigned(pixel[0]) << 16 | unsigned(pixel[1]) << 8 | pixel[2];
}

std::pair<int, int> Picture::rows(bool (*const looksSo)(unsigned)) const {
    int first = height, end = 0;
    for(int y = 0; y < height; ++y)
        for(int x = 0; x < width; ++x)
            if(looksSo(at(x, y))) {
                first = std::min(first, y);
                end = y + 1;
            }
    return first < end ? std::pair{first, end} : std::pair{0, 0};
}

Picture readPicture(const std::string& path) {
    Picture out;
    stbi_uc* const pixels = stbi_load(path.c_str(), &out.width, &out.height, &out.channels, 0);
    EXPECT_TRUE(pixels) << path;
    if(pixels)
        out.pixels.assign(pixels, pixels + std::ptrdiff_t(out.width) * out.height * out.channels);
    stbi_image_free(pixels);
    return out;
}

}
