/* Start, stop and many clients at once */

#include <chrono>
#include <filesystem>
#include <memory>
#include <thread>

#include <gmock/gmock.h>

#include "FewDescriptors.h"
#include "Process.h"
#include "ServerFixture.h"
#include "testing/sanitizer.h"

namespace QuillmereEngine { namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::StartsWith;

struct ProjectServerStartTest: ServerFixture {
    /* Generous: it takes milliseconds. What it's about are seconds of waiting for clients. */
    static constexpr std::chrono::seconds StopLimit{2};

    std::chrono::steady_clock::duration stopTime() {
        const auto begin = std::chrono::steady_clock::now();
        server.stop();
        return std::chrono::steady_clock::now() - begin;
    }

    std::string startLine() const { return "[info] Serving " + root + " on " + url("/"); }

    std::string stopLine() const { return "[info] No longer serving " + root; }
};

TEST_F(ProjectServerStartTest, StartAndStopAreLines) {
    EXPECT_THAT(lines(), IsEmpty());
    start();
    EXPECT_GT(port, 0);
    EXPECT_THAT(lines(), ElementsAre(startLine()));
    server.stop();
    EXPECT_THAT(lines(), ElementsAre(startLine(), stopLine()));
}

TEST_F(ProjectServerStartTest, StopTwiceIsAsOnce) {
    server.stop();
    start();
    server.stop();
    server.stop();
    EXPECT_THAT(lines(), ElementsAre(startLine(), stopLine()));
}

TEST_F(ProjectServerStartTest, NothingAnswersAfterStop) {
    start();
    EXPECT_EQ(get("/a.txt"), "content of a");
    server.stop();
    constexpr int CannotConnect = 7;
    EXPECT_EQ(curl({url("/a.txt")}).status, CannotConnect);
}

/* stop() of the library does nothing as long as its thread doesn't accept yet */
TEST_F(ProjectServerStartTest, StopRightAfterStartIsNotLost) {
    for(int i = 0; i != 200; ++i) {
        start();
        server.stop();
    }
    EXPECT_EQ(lines().size(), 400u);
}

TEST_F(ProjectServerStartTest, RestartsOnTheSamePort) {
    start();
    const int first = port;
    /* A connection that the server closed leaves the port in TIME_WAIT */
    EXPECT_THAT(ask("GET /a.txt HTTP/1.0\r\n\r\n"), EndsWith("content of a"));
    server.stop();
    EXPECT_EQ(server.start(root, first), first);
    EXPECT_EQ(get("/a.txt"), "content of a");
}

TEST_F(ProjectServerStartTest, PortInUseIsALine) {
    start();
    ProjectServer other{application, StoreLog::Echo::No};
    EXPECT_FALSE(other.start(root, port));
    ASSERT_EQ(other.serverLines().size(), 1u);
    EXPECT_THAT(std::string{other.serverLines().get(0)},
        EndsWith("[error] Can't serve " + root + " on port " + std::to_string(port) +
            ": Address already in use"));
    EXPECT_EQ(get("/a.txt"), "content of a");
    /* It can still serve elsewhere */
    EXPECT_TRUE(other.start(root, 0));
}

TEST_F(ProjectServerStartTest, MissingFolderIsALine) {
    EXPECT_FALSE(server.start(root + "/nothing", 0));
    EXPECT_THAT(lines(),
        ElementsAre("[error] Can't serve " + root + "/nothing: No such file or directory"));
}

TEST_F(ProjectServerStartTest, OutOfDescriptorsIsALine) {
    if(Testing::IsSanitized)
        GTEST_SKIP() << "The sanitizer needs descriptors itself";
    start();
    server.stop();
    ProjectServer& stopped = server;
    const std::string folder = root;
    bool isStarted;
    {
        const FewDescriptors limit;
        isStarted = bool(stopped.start(folder, 0));
    }
    EXPECT_FALSE(isStarted);
    EXPECT_EQ(lines().back(), "[error] Can't serve " + root + " on port 0: Too many open files");
}

TEST_F(ProjectServerStartTest, IdleClientsDoNotHoldUpStop) {
    start();
    std::vector<std::unique_ptr<RawClient>> clients;
    for(int i = 0; i != 24; ++i)
        clients.push_back(std::make_unique<RawClient>(port));
    RawClient& used = *clients.front();
    used.send("GET /a.txt HTTP/1.1\r\n\r\n");
    EXPECT_THAT(used.receive(1), StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_LT(stopTime(), StopLimit);
}

TEST_F(ProjectServerStartTest, HalfRequestDoesNotHoldUpStop) {
    start();
    const RawClient client{port};
    client.send("GET /a.txt HT");
    /* So that the first bytes most likely have been read; it must not matter */
    get("/a.txt");
    EXPECT_LT(stopTime(), StopLimit);
}

TEST_F(ProjectServerStartTest, DownloadDoesNotHoldUpStop) {
    outer.write("site/great.bin", std::string(50'000'000, 'x'));
    start();
    const RawClient client{port, 4096};
    client.send("GET /great.bin HTTP/1.1\r\n\r\n");
    EXPECT_THAT(client.receive(100), StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_LT(stopTime(), StopLimit);
    EXPECT_LT(client.receiveAll().size(), 50'000'000u);
    ASSERT_EQ(lines().size(), 3u);
    EXPECT_THAT(lines()[1], StartsWith("[info] GET /great.bin 200 "));
    EXPECT_THAT(lines()[1], EndsWith(" bytes T ms, broken off"));
}

TEST_F(ProjectServerStartTest, AnswersEachOfManyRequestsAtOnce) {
    constexpr int ClientCount = 8, FileCount = 50, RoundCount = Testing::IsSanitized ? 5 : 25;
    std::vector<std::string> contents;
    for(int i = 0; i != FileCount; ++i) {
        contents.emplace_back(std::size_t(i * i), char('a' + i % 26));
        outer.write("site/file" + std::to_string(i), contents.back());
    }
    start();

    std::vector<std::unique_ptr<Process>> clients;
    for(int i = 0; i != ClientCount; ++i) {
        const std::string out = outer.file("out" + std::to_string(i));
        std::filesystem::create_directory(out);
        clients.push_back(std::make_unique<Process>(std::vector<std::string>{"curl", "-q",
            "--silent", "--show-error", "--fail", "--noproxy", "*", "--output", out + "/#1-#2",
            url("/file[0-" + std::to_string(FileCount - 1) + "]?round=[1-" +
                std::to_string(RoundCount) + "]")}));
    }
    for(const std::unique_ptr<Process>& client: clients)
        EXPECT_EQ(client->wait(), 0) << client->error();

    for(int i = 0; i != ClientCount; ++i)
        for(int file = 0; file != FileCount; ++file)
            for(int round = 1; round <= RoundCount; ++round)
                ASSERT_EQ(Testing::readFile(outer.file("out" + std::to_string(i) + "/" +
                              std::to_string(file) + "-" + std::to_string(round))),
                    contents[std::size_t(file)]);
    const std::vector<std::string> requests = requestLines();
    EXPECT_EQ(requests.size(), std::size_t(ClientCount) * FileCount * RoundCount);
    for(const std::string& request: requests)
        ASSERT_THAT(request, StartsWith("[info] GET /file"));
}

}}
