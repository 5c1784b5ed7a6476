#include "editor/ServerConnection.h"

#include <csignal>
#include <memory>
#include <string>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace QuillmereEngine { namespace {

using namespace std::chrono_literals;

/* Short where the test waits for its end, long where something else has to end the waiting */
constexpr std::chrono::milliseconds Short{20}, Long{std::chrono::hours{1}};

struct ServerConnectionTest: ::testing::Test {
    ServerConnectionTest() {
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, _sockets), 0);
    }

    ~ServerConnectionTest() override {
        closeClient();
        close(_stopEvent);
    }

    ServerConnection& open(const ServerLimits limits = {Long, Long, Long, Long}) {
        connection = std::make_unique<ServerConnection>(_sockets[1], _stopEvent, limits);
        return *connection;
    }

    void send(const std::string& bytes) const {
        EXPECT_EQ(::send(_sockets[0], bytes.data(), bytes.size(), 0), ssize_t(bytes.size()));
    }

    std::string receive() const {
        char out[1000];
        const ssize_t size = recv(_sockets[0], out, sizeof(out), 0);
        return {out, std::size_t(size < 0 ? 0 : size)};
    }

    void closeClient() {
        if(_sockets[0] != -1)
            close(_sockets[0]);
        _sockets[0] = -1;
    }

    void stop() const { eventfd_write(_stopEvent, 1); }

    std::string read(const std::size_t size) const {
        std::string out(size, '\0');
        const std::ptrdiff_t count = connection->read(out.data(), size);
        out.resize(count < 0 ? 0 : std::size_t(count));
        return out;
    }

    std::unique_ptr<ServerConnection> connection;

private:
    int _sockets[2];
    int _stopEvent = eventfd(0, EFD_CLOEXEC);
};

TEST_F(ServerConnectionTest, ReadsWhatTheClientSends) {
    open();
    send("GET /a\r\nmore");
    EXPECT_TRUE(connection->waitForRequest());
    EXPECT_EQ(read(3), "GET");
    EXPECT_EQ(read(100), " /a\r\nmore");
    closeClient();
    EXPECT_EQ(read(100), "");
    EXPECT_EQ(connection->request().line, "GET /a\r");
}

TEST_F(ServerConnectionTest, RequestsAreToldApart) {
    open();
    send("first\nsecond");
    EXPECT_TRUE(connection->waitForRequest());
    EXPECT_EQ(read(6), "first\n");
    EXPECT_TRUE(connection->write("HTTP/1.1 404 No\r\n\r\nbody", 23));
    EXPECT_EQ(connection->request().status, 404);
    EXPECT_EQ(connection->request().bytes, 4u);

    EXPECT_TRUE(connection->waitForRequest());
    EXPECT_EQ(read(100), "second");
    EXPECT_EQ(connection->request().line, "second");
    EXPECT_EQ(connection->request().status, 0);
    EXPECT_EQ(connection->request().bytes, 0u);
}

TEST_F(ServerConnectionTest, ClientThatGoesSendsNoRequest) {
    open();
    closeClient();
    EXPECT_FALSE(connection->waitForRequest());
}

TEST_F(ServerConnectionTest, IdleClientIsNotWaitedForAnyLonger) {
    open({Short, Long, Long, Long});
    EXPECT_FALSE(connection->waitForRequest());
}

TEST_F(ServerConnectionTest, RequestHasToEndInTime) {
    open({Long, Short, Long, Long});
    send("GET");
    EXPECT_TRUE(connection->waitForRequest());
    EXPECT_EQ(read(3), "GET");
    char byte;
    EXPECT_EQ(connection->read(&byte, 1), 0);
}

TEST_F(ServerConnectionTest, RequestHasALimit) {
    open();
    std::size_t size = 0;
    send("x");
    EXPECT_TRUE(connection->waitForRequest());
    while(const std::size_t count = read(1000).size()) {
        size += count;
        send(std::string(1000, 'x'));
    }
    EXPECT_EQ(size, ServerConnection::MaxRequestSize);
}

TEST_F(ServerConnectionTest, ClientThatTakesNothingIsGivenUp) {
    open({Long, Long, Short, Long});
    const std::string answer(10'000'000, 'x');
    EXPECT_FALSE(connection->write(answer.data(), answer.size()));
    EXPECT_TRUE(connection->request().isBrokenOff);
}

TEST_F(ServerConnectionTest, WritingToAClientThatHasGoneFails) {
    const auto before = std::signal(SIGPIPE, SIG_DFL);
    open();
    closeClient();
    EXPECT_FALSE(connection->write("x", 1));
    EXPECT_TRUE(connection->request().isBrokenOff);
    std::signal(SIGPIPE, before);
}

TEST_F(ServerConnectionTest, NothingIsWaitedForOnceTheServerStops) {
    open();
    send("GET");
    EXPECT_TRUE(connection->waitForRequest());
    EXPECT_EQ(read(3), "GET");
    EXPECT_FALSE(connection->isStopping());
    stop();
    EXPECT_TRUE(connection->isStopping());
    char byte;
    EXPECT_EQ(connection->read(&byte, 1), -1);
    EXPECT_FALSE(connection->write("x", 1));
    EXPECT_FALSE(connection->waitForRequest());
    connection->finish();
}

TEST_F(ServerConnectionTest, FinishLetsTheClientReadItsAnswer) {
    open({Long, Long, Long, Short});
    send("unread");
    EXPECT_TRUE(connection->write("answer", 6));
    connection->finish();
    connection = nullptr;
    EXPECT_EQ(receive(), "answer");
    EXPECT_EQ(receive(), "");
}

}}
