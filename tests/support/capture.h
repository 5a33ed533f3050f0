// Captures debug trace records and message boxes; each capture holds its sink for its lifetime.
#ifndef ORVAN_TESTS_CAPTURE_H
#define ORVAN_TESTS_CAPTURE_H

#include <string>
#include <vector>

#include "orvan.h"

class TraceCapture {
public:
    TraceCapture() { OvSetDebugSink(&Receive, reinterpret_cast<intptr_t>(this)); }
    ~TraceCapture() { OvSetDebugSink(nullptr, 0); }

    std::vector<std::string> lines;

private:
    static void Receive(const char* text, intptr_t user)
    {
        reinterpret_cast<TraceCapture*>(user)->lines.emplace_back(text);
    }
};

struct CapturedBox { void* owner; std::string text, caption; uint32_t style; };

class BoxCapture {
public:
    BoxCapture() { OvSetMessageSink(&Receive, reinterpret_cast<intptr_t>(this)); }
    ~BoxCapture() { OvSetMessageSink(nullptr, 0); }

    std::vector<CapturedBox> boxes;

private:
    static int32_t Receive(void* owner, const char* text, const char* caption, uint32_t style, intptr_t user)
    {
        reinterpret_cast<BoxCapture*>(user)->boxes.push_back({owner, text, caption, style});
        return OV_IDOK;
    }
};

#endif
