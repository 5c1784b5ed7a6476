#include "ServerFixture.h"

#include <arpa/inet.h>
#include <filesystem>
#include <mutex>
#include <netinet/in.h>
#include <regex>
#include <sys/socket.h>
#include <unistd.h>

#include "Process.h"

namespace QuillmereEngine {

RawClient::RawClient(const int port, const int receiveBuffer):
    _socket{socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)} {
    if(receiveBuffer)
        setsockopt(_socket, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof(receiveBuffer));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(std::uint16_t(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(connect(_socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
}

RawClient::~RawClient() { close(_socket); }

void RawClient::send(const std::string& bytes) const {
    for(std::size_t i = 0; i < bytes.size();) {
        const ssize_t size = ::send(_socket, bytes.data() + i, bytes.size() - i, MSG_NOSIGNAL);
        if(size <= 0)
            return;
        i += std::size_t(size);
    }
}

void RawClient::finish() const { shutdown(_socket, SHUT_WR); }

std::string RawClient::receive(const std::size_t size) const {
    std::string out;
    char piece[4096];
    while(out.size() < size) {
        const ssize_t count = recv(_socket, piece, sizeof(piece), 0);
        if(count <= 0)
            break;
        out.append(piece, std::size_t(count));
    }
    return out;
}

std::string RawClient::receiveAll() const { return receive(std::string{}.max_size()); }

ServerFixture::ServerFixture() {
    std::filesystem::create_directories(outer.file("site/sub"));
    std::filesystem::create_directories(outer.file("site2"));
    outer.write("secret.txt", "secret");
    outer.write("site2/secret.txt", "secret");
    outer.write("site/a.txt", "content of a");
    outer.write("site/empty.txt", "");
    outer.write("site/sub/index.html", "<p>sub");
    outer.write("site/sub/b.json", "{}");
    root = std::filesystem::canonical(outer.file("site"));
}

void ServerFixture::start() {
    const std::optional<int> started = server.start(root, 0);
    ASSERT_TRUE(started);
    port = *started;
}

std::string ServerFixture::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port) + path;
}

CurlResult ServerFixture::curl(std::vector<std::string> arguments) const {
    /* Without the settings and proxies of whoever runs the tests */
    arguments.insert(arguments.begin(),
        {"curl", "-q", "--silent", "--noproxy", "*", "--path-as-is", "--globoff"});
    Process process{arguments};
    const int status = process.wait();
    return {status, process.out()};
}

std::string ServerFixture::get(const std::string& path) const { return curl({url(path)}).out; }

std::string ServerFixture::status(
    const std::string& path, std::vector<std::string> arguments) const {
    arguments.insert(
        arguments.end(), {"--output", "/dev/null", "--write-out", "%{http_code}", url(path)});
    return curl(std::move(arguments)).out;
}

std::string ServerFixture::ask(const std::string& bytes) const {
    const RawClient client{port};
    client.send(bytes);
    client.finish();
    return client.receiveAll();
}

std::vector<std::string> ServerFixture::lines() {
    constexpr std::size_t TimeSize = 25;
    const std::regex duration{" [0-9]+\\.[0-9] ms"};
    const std::lock_guard<std::mutex> lock{application.logMutex};
    const StringArrayView& store = server.serverLines();
    std::vector<std::string> out;
    for(std::size_t i = 0; i != store.size(); ++i)
        out.push_back(
            std::regex_replace(std::string{store.get(i)}.substr(TimeSize), duration, " T ms"));
    return out;
}

std::vector<std::string> ServerFixture::requestLines() {
    server.stop();
    std::vector<std::string> out = lines();
    /* Of start and stop */
    EXPECT_GE(out.size(), 2u);
    if(out.size() < 2)
        return {};
    return {out.begin() + 1, out.end() - 1};
}

}
