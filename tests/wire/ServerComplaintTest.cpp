#include "wire/ServerComplaint.h"

#include "support/TableRow.h"

namespace pobblewig {

class ServerComplaintTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Bodies as servers send them, with single quotes.
    void aRefusalIsUnderstoodByItsText_data()
    {
        columns<int, QString, ServerComplaint>("status", "body", "complaint");
        using enum ServerComplaint;
        row("local, typed", 400,
            "{'error':{'code':400,'message':'request (5021 tokens) exceeds the available context "
            "size (4096 tokens), try increasing it','type':'exceed_context_size_error'}}",
            contextOverflow);
        row("local, while it writes", 0, "Context size has been exceeded.", contextOverflow);
        row("hosted, coded", 400,
            "{'error':{'message':'This model\\'s maximum context length is 8192 tokens. However, "
            "your messages resulted in 9201 tokens.','code':'context_length_exceeded'}}",
            contextOverflow);
        row("self-hosted", 400,
            "{'object':'error','message':'The decoder prompt (length 5000) is longer than the "
            "maximum model length of 4096.','type':'BadRequestError'}",
            contextOverflow);
        row("desktop", 400,
            "{'error':'Trying to keep the first 5021 tokens when context the overflows. However, "
            "the model is loaded with context length of only 4096 tokens, which is not enough.'}",
            contextOverflow);
        row("counted", 400,
            "{'error':{'code':400,'message':'The input token count (1200000) exceeds the maximum "
            "number of tokens allowed (1048576).','status':'INVALID_ARGUMENT'}}",
            contextOverflow);
        row("prompt", 400, "{'error':{'message':'prompt is too long: 210000 tokens > 200000'}}",
            contextOverflow);
        row("validated", 422,
            "{'error':'Input validation error: `inputs` tokens + `max_new_tokens` must be <= "
            "4096.','error_type':'validation'}",
            contextOverflow);
        row("template flag", 500,
            "{'error':{'code':500,'message':'tools param requires --jinja flag'}}",
            toolsUnsupported);
        row("model without tools", 400, "{'error':{'message':'gemma3:4b does not support tools'}}",
            toolsUnsupported);
        row("routed tools", 404,
            "{'error':{'message':'No endpoints found that support tool use.','code':404}}",
            toolsUnsupported);
        row("parser flag", 400,
            "{'message':'\"auto\" tool choice requires --enable-auto-tool-choice to be set'}",
            toolsUnsupported);
        row("projector", 500,
            "{'error':{'code':500,'message':'image input is not supported - hint: if this is "
            "unexpected, you may need to provide the mmproj','type':'server_error'}}",
            imagesUnsupported);
        row("schema", 422,
            "Failed to deserialize the JSON body: messages[3]: unknown variant `image_url`, "
            "expected `text`",
            imagesUnsupported);
        row("desktop, pictures", 400,
            "{'error':'Model does not support images. Please use a model that does.'}",
            imagesUnsupported);
        row("routed pictures", 404,
            "{'error':{'message':'No endpoints found that support image "
            "input'}}",
            imagesUnsupported);
        row("starting", 503,
            "{'error':{'code':503,'message':'Loading model','type':'unavailable_error'}}",
            modelLoading);
        row("starting elsewhere", 503,
            "{'error':'Model m is currently loading','estimated_time':20.0}", modelLoading);
        row("could not start", 500, "{'error':'error loading model: bad magic'}", plain);
        row("a wrong key", 401, "{'error':{'message':'Incorrect API key provided'}}", plain);
        row("a wrong schema", 400, "{'error':'invalid schema for function set_mode'}", plain);
        row("busy", 503, "{'error':'no slot available'}", plain);
        row("nothing", 400, "", plain);
    }
    void aRefusalIsUnderstoodByItsText()
    {
        QFETCH(int, status);
        QFETCH(QString, body);
        QTEST(ServerComplaintLogic::complaint(status, body), "complaint");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ServerComplaintTest)
#include "ServerComplaintTest.moc"
