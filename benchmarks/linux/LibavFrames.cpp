#include "LibavFrames.h"

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace pobblewig {

namespace {

struct Freeing {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};

template <typename Thing>
using Owned = std::unique_ptr<Thing, Freeing>;

Owned<AVFormatContext> opened(const QString& path)
{
    AVFormatContext* context = nullptr;
    if (avformat_open_input(&context, qPrintable(path), nullptr, nullptr) < 0)
        return nullptr;
    return Owned<AVFormatContext>(context);
}

} // namespace

int libavFrames(const QString& path)
{
    const auto format = opened(path);
    const auto* const codec = avcodec_find_decoder(AV_CODEC_ID_GIF);
    const Owned<AVCodecContext> decoder(avcodec_alloc_context3(codec));
    if (!format || avcodec_parameters_to_context(decoder.get(), format->streams[0]->codecpar) < 0
        || avcodec_open2(decoder.get(), codec, nullptr) < 0)
        return 0;
    const Owned<AVPacket> packet(av_packet_alloc());
    const Owned<AVFrame> frame(av_frame_alloc());
    int frames = 0;
    while (av_read_frame(format.get(), packet.get()) >= 0) {
        avcodec_send_packet(decoder.get(), packet.get());
        av_packet_unref(packet.get());
        while (avcodec_receive_frame(decoder.get(), frame.get()) >= 0)
            ++frames;
    }
    return frames;
}

} // namespace pobblewig
