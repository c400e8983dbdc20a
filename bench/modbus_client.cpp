// A plain client of a common field bus: what kestrelctl's processor time an exchange is measured against. It reads one
// register of a server on a pseudo-terminal, frames as long as ours, at the pace of the scan.
// Arguments: how many exchanges. Prints processor time an exchange in microseconds.
#include <fcntl.h>
#include <modbus.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int Baud = 19200;
constexpr int Slave = 1;
constexpr int PaceMicros = 40'000;

modbus_t* portAt(const char* device) {
    modbus_t* const port = modbus_new_rtu(device, Baud, 'N', 8, 1);
    if (!port || modbus_set_slave(port, Slave) != 0) std::exit(EXIT_FAILURE);
    return port;
}

double processorMicros() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto micros = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
    };
    return micros(used.ru_utime) + micros(used.ru_stime);
}

/// The server's side: bytes between two pseudo-terminals go through a child, so that both have a device of their own.
void serve(int line) {
    modbus_t* const context = portAt("/dev/null");
    modbus_mapping_t* const registers = modbus_mapping_new(0, 0, 16, 0);
    modbus_set_socket(context, line);
    unsigned char query[MODBUS_RTU_MAX_ADU_LENGTH];
    for (;;) {
        const int length = modbus_receive(context, query);
        if (length > 0) modbus_reply(context, query, length, registers);
        if (length < 0) std::exit(EXIT_SUCCESS);
    }
}

}  // namespace

int main(int count, char** arguments) {
    const int exchanges = count > 1 ? std::atoi(arguments[1]) : 250;
    const int line = posix_openpt(O_RDWR | O_NOCTTY);
    if (line < 0 || grantpt(line) != 0 || unlockpt(line) != 0) return EXIT_FAILURE;
    const pid_t server = fork();
    if (server == 0) serve(line);
    modbus_t* const port = portAt(ptsname(line));
    if (modbus_connect(port) != 0) return EXIT_FAILURE;
    const double before = processorMicros();
    int good = 0;
    for (int i = 0; i < exchanges; ++i) {
        unsigned short value = 0;
        good += modbus_read_registers(port, 0, 1, &value) == 1 ? 1 : 0;
        usleep(PaceMicros);
    }
    std::printf("%d %.2f\n", good, (processorMicros() - before) / exchanges);
    kill(server, SIGTERM);
    waitpid(server, nullptr, 0);
    return good == exchanges ? EXIT_SUCCESS : EXIT_FAILURE;
}
