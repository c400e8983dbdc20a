// A plain client of a common field bus: what kestrelctl's processor time an exchange is measured against. It reads one
// register of a server on a pseudo-terminal, at the pace of the scan, until it is ended, and tells how often.
#include <fcntl.h>
#include <modbus.h>
#include <signal.h>
#include <sys/prctl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int Baud = 19200;
constexpr int Slave = 1;
constexpr int PaceMicros = 40'000;
constexpr int TellEvery = 5;

modbus_t* portAt(const char* device) {
    modbus_t* const port = modbus_new_rtu(device, Baud, 'N', 8, 1);
    if (!port || modbus_set_slave(port, Slave) != 0) std::exit(EXIT_FAILURE);
    return port;
}

/// The server's side. Its reply comes as our machine's comes: after some milliseconds, in three pieces on average, at
/// the line's pace; so a client is woken as often.
void serve(int line) {
    constexpr unsigned char reply[] = {Slave, 3, 2, 0, 0, 0xB8, 0x44};  // one register that holds 0
    constexpr int Pieces[] = {2, 2, 3};
    constexpr int AnswerMicros = 4'000;
    constexpr int ByteMicros = 521;
    constexpr int RequestLength = 8;
    for (int heard = 0;;) {
        unsigned char bytes[RequestLength];
        const ssize_t count = read(line, bytes, sizeof bytes);
        if (count <= 0) std::exit(EXIT_SUCCESS);
        heard += static_cast<int>(count);
        if (heard < RequestLength) continue;
        heard = 0;
        usleep(AnswerMicros);
        const unsigned char* next = reply;
        for (const int piece : Pieces) {
            if (write(line, next, static_cast<std::size_t>(piece)) != piece) std::exit(EXIT_FAILURE);
            next += piece;
            usleep(static_cast<useconds_t>(piece * ByteMicros));
        }
    }
}

}  // namespace

int main() {
    const int line = posix_openpt(O_RDWR | O_NOCTTY);
    if (line < 0 || grantpt(line) != 0 || unlockpt(line) != 0) return EXIT_FAILURE;
    const int held = open(ptsname(line), O_RDWR | O_NOCTTY);  // so that the server can wait before the client comes
    termios raw{};
    cfmakeraw(&raw);
    tcsetattr(held, TCSANOW, &raw);
    const pid_t server = fork();
    if (server == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        serve(line);
    }
    modbus_t* const port = portAt(ptsname(line));
    if (modbus_connect(port) != 0) return EXIT_FAILURE;
    for (int exchanges = 1;; ++exchanges) {
        unsigned short value = 0;
        if (modbus_read_registers(port, 0, 1, &value) != 1) return EXIT_FAILURE;
        usleep(PaceMicros);
        if (exchanges % TellEvery == 0) {
            std::printf("%d\n", exchanges);
            std::fflush(stdout);
        }
    }
}
