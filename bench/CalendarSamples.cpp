#include "CalendarSamples.h"

#include <QDir>
#include <QTemporaryDir>
#include <cstdio>
#include <fstream>
#include <map>

namespace mivora::samples {

namespace {

constexpr char zoneText[] = "BEGIN:VTIMEZONE\r\nTZID:Europe/Berlin\r\nX-LIC-LOCATION:Europe/Berlin\r\n"
                            "BEGIN:DAYLIGHT\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\nTZNAME:CEST\r\n"
                            "DTSTART:19700329T020000\r\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\n"
                            "END:DAYLIGHT\r\nBEGIN:STANDARD\r\nTZOFFSETFROM:+0200\r\nTZOFFSETTO:+0100\r\n"
                            "TZNAME:CET\r\nDTSTART:19701025T030000\r\n"
                            "RRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n";

std::string number(const char *format, int value)
{
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string dayOf(int n)
{
    if (n % 40 == 0 && n < 10000)
        return "202603" + number("%02d", 9 + n / 40 % 5);
    return number("%d", 2016 + n % 10) + number("%02d", 1 + n / 10 % 12) + number("%02d", 1 + n / 120 % 28);
}

std::string eventText(int n)
{
    const std::string id = number("%07d", n);
    const std::string hour = number("%02d", 8 + n % 9);
    const std::string day = dayOf(n);
    std::string text = "BEGIN:VEVENT\r\nUID:" + id + "-4f1c-9d2e@calendar.example.com\r\n";
    text += "DTSTAMP:20250101T080000Z\r\nCREATED:20250101T080000Z\r\nSEQUENCE:1\r\n";
    text += "DTSTART;TZID=Europe/Berlin:" + day + "T" + hour + "0000\r\n";
    text += "DTEND;TZID=Europe/Berlin:" + day + "T" + hour + "3000\r\n";
    if (n % 15 == 7)
        text += "RRULE:FREQ=WEEKLY;COUNT=20\r\n";
    text += "SUMMARY:Project meeting " + id + "\r\nLOCATION:Room " + number("%d", n % 30) + "\r\n";
    text += "DESCRIPTION:Agenda\\n1. Where we are\\n2. What is next\\nhttps://meet.google.com\r\n"
            " /abc-defg-hij\r\n";
    for (const char *name : {"ann", "bert", "cleo"})
        text += std::string("ATTENDEE;CN=") + name +
                ";PARTSTAT=ACCEPTED;ROLE=REQ-PARTICIPANT:mailto:" + name + "@example.com\r\n";
    return text + "STATUS:CONFIRMED\r\nTRANSP:OPAQUE\r\nEND:VEVENT\r\n";
}

std::string head()
{
    return std::string("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Example//Calendar//EN\r\n") + zoneText;
}

/// Fills the root when it is first asked for. Temporary folders live as long as the program.
std::string rootOf(const QTemporaryDir &folder, void (*write)(const std::string &, int), int count)
{
    const QString root = folder.path();
    if (QDir(root).mkdir(QStringLiteral("work")))
        write(root.toStdString() + "/work", count);
    return root.toStdString();
}

} // namespace

std::string eventFile(int number)
{
    return head() + eventText(number) + "END:VCALENDAR\r\n";
}

void writeFiles(const std::string &folder, int count)
{
    for (int i = 0; i < count; ++i)
        std::ofstream(folder + "/" + number("%07d", i) + "-4f1c-9d2e.ics") << eventFile(i);
}

void writeOneFile(const std::string &folder, int count)
{
    std::ofstream file(folder + "/all.ics");
    file << head();
    for (int i = 0; i < count; ++i)
        file << eventText(i);
    file << "END:VCALENDAR\r\n";
}

std::string folderOfFiles(int count)
{
    static std::map<int, QTemporaryDir> roots;
    return rootOf(roots[count], writeFiles, count);
}

std::string folderWithOneFile(int count)
{
    static std::map<int, QTemporaryDir> roots;
    return rootOf(roots[count], writeOneFile, count);
}

} // namespace mivora::samples
