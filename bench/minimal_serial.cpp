// The least that a serial loop over the toolkit can be: what the program's processor time is measured against.
// Every 40 ms it sends the next of the given frames and takes the reply. Arguments: device, then frames in hexadecimal.
#include <QByteArray>
#include <QCoreApplication>
#include <QSerialPort>
#include <QTimer>
#include <numeric>
#include <vector>

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QSerialPort port(QString::fromLocal8Bit(argv[1]));
    std::vector<QByteArray> frames;
    for (int i = 2; i < argc; ++i) frames.push_back(QByteArray::fromHex(argv[i]));
    port.setBaudRate(QSerialPort::Baud19200);
    if (frames.empty() || !port.open(QIODevice::ReadWrite)) return 1;
    std::size_t next = 0;
    QByteArray reply;
    QObject::connect(&port, &QSerialPort::readyRead, [&] {
        reply += port.readAll();
        if (reply.size() < 2) return;
        const int sum = std::accumulate(reply.begin(), reply.end() - 1, 0);
        if (static_cast<char>(sum) == reply.back()) reply.clear();
    });
    QTimer tick;
    tick.setTimerType(Qt::PreciseTimer);
    QObject::connect(&tick, &QTimer::timeout, [&] {
        reply.clear();
        port.write(frames[next]);
        next = (next + 1) % frames.size();
    });
    tick.start(40);
    return QCoreApplication::exec();
}
