#pragma once

#include "machine/LinkError.h"
#include "machine/Machine.h"
#include "simulator/UnitPort.h"

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

/// An event pump with a clock of its own. Time passes only in waits, from one scheduled happening
/// to the next, so a test says exactly what happens when and never sleeps.
class FakePump : public EventPump {
public:
    /// Schedules a happening `seconds` from now.
    void in(double seconds, std::function<void()> happening) {
        scheduled.emplace(clock + seconds, std::move(happening));
    }

    /// Asked in every turn of every wait: what the user does as soon as there is something to do.
    std::function<void()> eachTurn = [] {};

    [[nodiscard]] double now() const override { return clock; }

    void runQueued() override {
        show();
        eachTurn();
        while (!ended() && !scheduled.empty() && scheduled.begin()->first <= clock)
            runNext();
    }

    /// The user's turn is a batch of its own: what is done in it may end the wait.
    /// @throws std::logic_error for a wait that nothing scheduled can end
    void runEvents(std::optional<double> deadline) override {
        if (ended())
            return;
        show();
        if (!std::exchange(turnTaken, false)) {
            eachTurn();
            turnTaken = true;
            return;
        }
        if (!scheduled.empty() && (!deadline || scheduled.begin()->first <= *deadline))
            runNext();
        else if (deadline)
            clock = std::max(clock, *deadline);
        else if (++idleBatches >= 100)
            throw std::logic_error("a wait has no way out");
        turnTaken = false;
    }

private:
    void runNext() {
        auto next = scheduled.extract(scheduled.begin());
        clock = std::max(clock, next.key());
        idleBatches = 0;
        next.mapped()();
    }

    double clock = 1000.0;
    std::multimap<double, std::function<void()>> scheduled;
    bool turnTaken = false;
    int idleBatches = 0; ///< in a row, with nothing to run and nothing to wait for
};

/// The way from a fake transport to a device and back: hands on what is written and brings each
/// answer back later, whole or in pieces.
class FakeWire {
public:
    explicit FakeWire(FakePump &fakePump) : pump(fakePump) {}

    /// Bytes in, bytes out; a device that says nothing gives an empty text.
    std::function<std::string(std::string_view)> device = [](auto) { return std::string(); };
    double delay = 0.01;     ///< seconds until the first piece of an answer
    std::size_t split = 0;   ///< bytes in a piece; 0: whole
    double pieceDelay = 0.0; ///< seconds between pieces
    std::string written;     ///< all that was ever written

    /// Passes `text` to the device; `deliver` gets the pieces of its answer.
    void pass(std::string_view text, const std::function<void(std::string)> &deliver) {
        written += text;
        const std::string answer = device(text);
        const std::size_t length = split == 0 ? answer.size() : split;
        double due = delay;
        for (std::size_t at = 0; at < answer.size(); at += length, due += pieceDelay)
            pump.in(due, [deliver, piece = answer.substr(at, length)] { deliver(piece); });
    }

private:
    FakePump &pump;
};

/// The serial ports of a machine in memory. One device answers, on whichever port is open.
class FakeSerialPort : public SerialPort {
public:
    explicit FakeSerialPort(FakePump &pump) : wire(pump) {}

    FakeWire wire;
    std::set<int> present;        ///< ports that open
    std::set<int> swapped;        ///< ports that are another device now
    std::set<int> held;           ///< ports whose device is there and does not open
    std::vector<std::string> log; ///< "open 7 38400,N,8,1", "close"

    /// Takes the open device away, as when its cable is pulled, and tells so.
    void vanish() {
        present.erase(openPort);
        if (std::exchange(openPort, 0) != 0)
            lost();
    }

    [[nodiscard]] SerialDevice device(int number) const override {
        return {number, (swapped.contains(number) ? "other" : "tty") + std::to_string(number)};
    }
    [[nodiscard]] std::vector<SerialDeviceFacts>
    look(const std::vector<SerialDevice> &asked) const override {
        std::vector<SerialDeviceFacts> all;
        for (const auto &[number, name] : asked) {
            all.push_back({.adapter = number == 1 ? "FTDI" : ""});
            if (present.contains(number) || held.contains(number))
                all.back().presence = SerialDeviceFacts::Presence::There;
        }
        return all;
    }
    [[nodiscard]] std::string holder(const SerialDevice &) const override { return "minicom"; }
    void open(const SerialDevice &device, std::string_view settings) override {
        openPort = 0;
        place = "COM" + std::to_string(device.number);
        const bool isHeld = held.contains(device.number);
        if (!present.contains(device.number))
            throw LinkError("Opening", place, "no such device",
                            isHeld ? LinkFailure::NotPermitted : LinkFailure::NoDevice);
        openPort = device.number;
        log.push_back("open " + std::to_string(openPort) + " " + std::string(settings) +
                      (device.name.starts_with("tty") ? "" : " " + device.name));
    }
    void close() override {
        openPort = 0;
        log.emplace_back("close");
    }
    [[nodiscard]] bool isOpen() const override { return openPort != 0; }
    void discardBuffers() override { input.clear(); }
    void write(std::string_view text) override {
        if (!isOpen())
            throw LinkError("Writing to", place, "the port is not open");
        wire.pass(text, [this](const std::string &piece) { input += piece; });
    }
    std::string readAll() override { return std::exchange(input, {}); }

private:
    int openPort = 0;
    std::string place = "COM0";
    std::string input;
};

/// A TCP connection in memory.
class FakeTcpSocket : public TcpSocket {
public:
    explicit FakeTcpSocket(FakePump &fakePump) : wire(fakePump), pump(fakePump) {}

    enum class Host { Answers, Silent, Refuses, Unreachable };

    FakeWire wire;
    Host host = Host::Answers;
    double connectDelay = 0.05;   ///< seconds until the host answers or refuses
    double sendDelay = 0.0;       ///< seconds until a send is complete
    std::vector<std::string> log; ///< "connect 10.0.0.5:23", "close"

    /// The other side ends the connection.
    void peerCloses() {
        reason = "the remote host closed the connection";
        if (std::exchange(currentState, SocketState::Closed) == SocketState::Connected)
            lost();
    }

    [[nodiscard]] SocketState state() const override { return currentState; }
    void connectTo(std::string_view address, int port) override {
        place = std::string(address) + " port " + std::to_string(port);
        log.push_back("connect " + std::string(address) + ":" + std::to_string(port));
        currentState = SocketState::Connecting;
        const int mine = ++connection;
        if (host == Host::Silent)
            return;
        pump.in(connectDelay, [this, mine] {
            if (mine != connection)
                return;
            currentState = host == Host::Refuses ? SocketState::Closed : SocketState::Failed;
            reason = "the host did not take the connection";
            if (host != Host::Answers)
                return;
            currentState = SocketState::Connected;
            connectComplete();
        });
    }
    void close() override {
        log.emplace_back("close");
        currentState = SocketState::Closed;
        reason = "the connection is closed";
        ++connection;
    }
    void send(std::string_view text) override {
        if (currentState != SocketState::Connected)
            throw LinkError("Sending to", place, reason);
        const auto alive = [this, mine = connection] {
            return mine == connection && currentState == SocketState::Connected;
        };
        pump.in(sendDelay, [this, alive] { alive() ? sendComplete() : void(); });
        wire.pass(text, [this, alive](const std::string &piece) {
            if (alive())
                input += piece, dataArrival();
        });
    }
    std::string readAll() override { return std::exchange(input, {}); }
    [[nodiscard]] std::string failureReason() const override { return reason; }

private:
    FakePump &pump;
    SocketState currentState = SocketState::Closed;
    int connection = 0; ///< counts connects, so that happenings of an old one are dropped
    std::string place;
    std::string reason = "the connection is closed";
    std::string input;
};

/// Files in memory.
class FakeFileStore : public FileStore {
public:
    std::map<std::string, std::string> contentsOf; ///< by path
    std::string failure;                           ///< what every replace fails with; empty: none
    std::vector<std::pair<std::string, int>> versions; ///< of files that were replaced, and how
                                                       ///< many replaces had failed before each
    std::string readFailure;                           ///< what every read fails with; empty: none

    bool exists(const std::string &path) const override { return contentsOf.contains(path); }
    std::string read(const std::string &path, std::string &contents) const override {
        if (readFailure.empty())
            contents = contentsOf.at(path);
        return readFailure;
    }
    std::string replace(const std::string &path, std::string_view contents,
                        const std::string &backupPath) override {
        if (!failure.empty()) {
            ++failures;
            return failure;
        }
        versions.emplace_back(contents, std::exchange(failures, 0));
        if (exists(path))
            contentsOf[backupPath] = contentsOf[path];
        contentsOf[path] = contents;
        return {};
    }
    std::string join(const std::string &folder, const std::string &name) const override {
        return folder + "/" + name;
    }

private:
    int failures = 0;
};

/// A machine in memory, joined to one simulated unit: on COM7, and at any address that is
/// connected.
class FakeMachine {
public:
    explicit FakeMachine(UnitOptions options = {}) : unit(std::move(options)) {
        serialPort.present = {7};
        serialPort.wire.device = answerOf(serialUnitPort);
        socket.wire.device = answerOf(networkUnitPort);
    }

    FakePump pump;
    FakeSerialPort serialPort{pump};
    FakeTcpSocket socket{pump};
    FakeFileStore files;
    Unit unit;

    [[nodiscard]] Machine services() { return {pump, serialPort, socket, files, "program"}; }

    /// What went to the unit since the last call, both links.
    std::string takeWritten() {
        return std::exchange(serialPort.wire.written, {}) + std::exchange(socket.wire.written, {});
    }

private:
    static std::function<std::string(std::string_view)> answerOf(UnitPort &port) {
        return [&port](std::string_view bytes) {
            std::string answer;
            for (const auto &exchanged : port.receive(bytes))
                answer += exchanged.answer;
            return answer;
        };
    }

    UnitPort serialUnitPort{unit};
    UnitPort networkUnitPort{unit};
};
