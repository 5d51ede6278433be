#include "Load.hpp"

#include "Client.hpp"
#include "Measure.hpp"

#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace bench {
namespace {

constexpr std::string_view kLength = "Content-Length: ";

/// Keeps pace with the answer to one request.
class Answer {
  public:
    void begin() { *this = Answer(); }
    /// Takes the next bytes; true when the answer is complete.
    bool take(std::string_view bytes) {
        if (size_ == 0) {
            head_.append(bytes);
            readHead();
            received_ = head_.size();
        } else {
            received_ += bytes.size();
        }
        return size_ > 0 && received_ >= size_;
    }

  private:
    void readHead() {
        const auto end = head_.find("\r\n\r\n");
        if (end == std::string::npos) {
            return;
        }
        const auto length = head_.find(kLength);
        if (head_.compare(0, 12, "HTTP/1.1 200") != 0 || length > end || head_.find("<ERROR ") != std::string::npos) {
            throw std::runtime_error("unexpected answer: " + head_);
        }
        size_ = end + 4 + std::stoul(head_.substr(length + kLength.size(), 12));
    }

    std::string head_; ///< what came with the head
    std::size_t size_ = 0;
    std::size_t received_ = 0;
};

class Load {
  public:
    Load(int port, unsigned connections, const Requests& requests)
        : requests_(requests), epoll_(::epoll_create1(EPOLL_CLOEXEC)) {
        for (unsigned i = 0; i < connections; ++i) {
            clients_.push_back(std::make_unique<Client>(port));
            epoll_event event{EPOLLIN, {}};
            event.data.u32 = i;
            ::epoll_ctl(epoll_, EPOLL_CTL_ADD, clients_.back()->connection.fd(), &event);
        }
    }
    ~Load() { ::close(epoll_); }
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;

    /// Until the time is over or the requests are sent, whichever comes first.
    LoadResult run(std::chrono::milliseconds time, std::size_t most) {
        end_ = Clock::now() + time;
        left_ = most;
        for (unsigned i = 0; i < clients_.size() && left_ > 0; ++i) {
            ask(i);
        }
        while (asked_ > 0) {
            epoll_event events[64];
            const int count = ::epoll_wait(epoll_, events, 64, 20'000);
            if (count <= 0) {
                throw std::runtime_error("the server does not answer");
            }
            for (int i = 0; i < count; ++i) {
                receive(events[i].data.u32);
            }
        }
        return {static_cast<double>(inTime_) / std::chrono::duration<double>(time).count(), quantile(times_, 0.5),
                quantile(times_, 0.99)};
    }

  private:
    struct Client {
        explicit Client(int port) : connection(port) {}
        Connection connection;
        Answer answer;
        Clock::time_point asked;
        unsigned number = 0;
    };

    void ask(unsigned index) {
        Client& client = *clients_[index];
        --left_;
        client.answer.begin();
        client.asked = Clock::now();
        client.connection.send(requests_(index, client.number++));
        ++asked_;
    }

    void receive(unsigned index) {
        Client& client = *clients_[index];
        const ssize_t size = ::recv(client.connection.fd(), buffer_, sizeof buffer_, 0);
        if (size <= 0) {
            throw std::runtime_error("the server closed a connection");
        }
        if (!client.answer.take({buffer_, static_cast<std::size_t>(size)})) {
            return;
        }
        --asked_;
        const auto now = Clock::now();
        times_.push_back(nanoseconds(now - client.asked) / 1000);
        inTime_ += now < end_ ? 1U : 0U;
        if (now < end_ && left_ > 0) {
            ask(index);
        }
    }

    const Requests& requests_;
    const int epoll_;
    std::vector<std::unique_ptr<Client>> clients_;
    std::vector<double> times_;
    Clock::time_point end_;
    std::size_t left_ = 0;
    std::size_t asked_ = 0; ///< and not answered yet
    std::size_t inTime_ = 0;
    char buffer_[65536];
};

void allowDescriptors(unsigned connections) {
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = std::max<rlim_t>(limit.rlim_cur, std::min<rlim_t>(limit.rlim_max, connections + 100));
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

} // namespace

LoadResult measureLoad(int port, unsigned connections, std::chrono::milliseconds time, const Requests& requests) {
    allowDescriptors(connections);
    return Load(port, connections, requests).run(time, ~std::size_t{0});
}

void sendRequests(int port, unsigned connections, unsigned total, const Requests& requests) {
    allowDescriptors(connections);
    Load(port, connections, requests).run(std::chrono::hours(1), total);
}

} // namespace bench
