// What the system tells of a program that runs.
#pragma once

#include <QProcess>

namespace journey {

double ResidentMb(const QProcess& process); // 10^6 bytes
int HandlesOf(const QProcess& process);     // files, sockets and the like that it holds open
int ThreadsOf(const QProcess& process);
double CpuMs(const QProcess& process);         // all its threads, also those that have ended
double FirstThreadMs(const QProcess& process); // exactly
double OwnCpuMs(); // this program's, and those it started and waited for

} // namespace journey
