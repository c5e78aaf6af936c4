#pragma once

#include "support/LoopbackServer.h"

/// The events of a streamed reply, and ways to answer with them.
namespace pobblewig::VendorStream {

// JSON is written with single quotes here, and what is JSON inside of JSON with back quotes.
inline QByteArray requoted(QByteArray text)
{
    return text.replace('\'', '"').replace('`', "\\\"");
}

inline QByteArray chunk(const QByteArray& text)
{
    return "data: " + requoted(text) + "\n\n";
}

inline QByteArray delta(const QByteArray& fields)
{
    return chunk("{'choices':[{'index':0,'delta':{" + fields + "},'finish_reason':null}]}");
}

inline QByteArray calls(const QByteArray& deltas)
{
    return delta("'tool_calls':[" + deltas + "]");
}

inline QByteArray opened(int index, const QByteArray& id, const QByteArray& name)
{
    return calls("{'index':" + QByteArray::number(index) + ",'id':'" + id
        + "','type':'function','function':{'name':'" + name + "','arguments':''}}");
}

inline QByteArray piece(int index, const QByteArray& arguments)
{
    return calls(
        "{'index':" + QByteArray::number(index) + ",'function':{'arguments':'" + arguments + "'}}");
}

inline QByteArray ended(const QByteArray& reason)
{
    return chunk("{'choices':[{'delta':{},'finish_reason':'" + reason + "'}]}")
        + "data: [DONE]\n\n";
}

inline QByteArray usage(int prompt, int completion)
{
    return chunk("{'choices':[],'usage':{'prompt_tokens':" + QByteArray::number(prompt)
        + ",'completion_tokens':" + QByteArray::number(completion) + "}}");
}

inline const QByteArray reminder = "propose_reminder";
inline const QByteArray tea = "{`proposalId`:`t`,`title`:`Tea`}";

inline LoopbackServer::Script streamed(const QByteArray& body)
{
    return { LoopbackServer::Send { LoopbackServer::eventStreamHead() },
        LoopbackServer::Send { body }, LoopbackServer::Close() };
}

inline LoopbackServer::Script refused(const QByteArray& status)
{
    return { LoopbackServer::Send { LoopbackServer::answer(
        status, requoted("{'error':{'message':'tools are not supported','code':null}}")) } };
}

/// A body in chunks that announces more than it has.
inline LoopbackServer::Script cut(const QByteArray& body)
{
    return { LoopbackServer::Send { "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                 + QByteArray::number(body.size(), 16) + "\r\n" + body + "\r\n" },
        LoopbackServer::Close() };
}

} // namespace pobblewig::VendorStream
