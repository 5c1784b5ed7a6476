#ifndef Quillmere_editor_Test_ServerFixture_h
#define Quillmere_editor_Test_ServerFixture_h

#include <atomic>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "editor/ProjectServer.h"
#include "host/QuillmereEditorApplication.h"
#include "testing/TemporaryFolder.h"

namespace QuillmereEngine {

/** @brief A client that sends what it likes */
class RawClient {
public:
    /** @param receiveBuffer    Of the kernel, in bytes, 0 for its default */
    explicit RawClient(int port, int receiveBuffer = 0);
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;
    ~RawClient();

    void send(const std::string& bytes) const;
    /** @brief Say that nothing more will be sent */
    void finish() const;
    /** @brief Receive at least so many bytes, fewer only if the server closes the connection */
    std::string receive(std::size_t size) const;
    /** @brief All up to the end of the connection */
    std::string receiveAll() const;

private:
    int _socket;
};

/** @brief What a run of curl gave */
struct CurlResult {
    int status = 0;
    std::string out;
};

/** @brief A server of a folder `site`, beside which there is more that isn't its to serve */
struct ServerFixture: ::testing::Test {
    struct Application: QuillmereEditorApplication {
        void consoleLinesChanged() override { ++noticeCount; }
        std::atomic<int> noticeCount{0};
    };

    ServerFixture();

    /** @brief Start on any free port, which becomes @ref port */
    void start();

    std::string url(const std::string& path) const;

    /** @brief Arguments of curl behind those that keep it quiet and the path as it is */
    CurlResult curl(std::vector<std::string> arguments) const;

    /** @brief Body of the answer for a path */
    std::string get(const std::string& path) const;

    /** @brief Status that curl reports */
    std::string status(const std::string& path, std::vector<std::string> arguments = {}) const;

    /** @brief Answer for bytes that needn't be a request */
    std::string ask(const std::string& bytes) const;

    /** @brief The lines behind their times, with their durations as `T ms` */
    std::vector<std::string> lines();

    /** @brief Stop, so that all lines are there, and give those of requests */
    std::vector<std::string> requestLines();

    Testing::TemporaryFolder outer;
    std::string root;
    Application application;
    ProjectServer server{application, StoreLog::Echo::No};
    int port = 0;
};

}

#endif
