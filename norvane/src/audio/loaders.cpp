#include "audio/loaders.h"

#include <AL/al.h>
#include <vorbis/vorbisfile.h>

#include <climits>

#include "debug/log.h"

namespace norvane {
namespace audio {

namespace {
const std::string OGG_EXTENSION = ".ogg";
// Larger claims come from a broken or hostile header; no game sound is near this.
const ogg_int64_t MAX_DECODED_SIZE = INT_MAX / 2;
}  // namespace

FileLoader::FileLoader(const std::string& filename) {
    file = std::fopen(filename.c_str(), "rb");
    if (!file) throw std::string("Could not open file \"" + filename + "\".");
}

FileLoader::~FileLoader() {
    freeBuffer();
    if (file) std::fclose(file);
}

void FileLoader::freeBuffer() {
    delete[] buffer;
    buffer = nullptr;
    capacity = 0;
}

OggFileLoader::OggFileLoader(const std::string& filename) : FileLoader(filename), vorbisFile(new OggVorbis_File()) {
    const int result = ov_open(file, vorbisFile, nullptr, 0);
    if (result < 0) {
        delete vorbisFile;  // the base destructor still closes the file
        throw std::string("Could not read Ogg stream:") + getOggErrorString(result);
    }
    info = ov_info(vorbisFile, -1);
    const ogg_int64_t bytes = info->channels * 2 * ov_pcm_total(vorbisFile, -1);
    if (bytes < 0 || bytes > MAX_DECODED_SIZE) {
        ov_clear(vorbisFile);
        delete vorbisFile;
        file = nullptr;  // ov_clear closed it
        throw std::string("Could not read Ogg stream:") + getOggErrorString(OV_EBADHEADER);
    }
    format = info->channels == 1 ? AL_FORMAT_MONO16 : AL_FORMAT_STEREO16;
    frequency = static_cast<int>(info->rate);
    size = static_cast<int>(bytes);
}

OggFileLoader::~OggFileLoader() {
    ov_clear(vorbisFile);
    delete vorbisFile;
    file = nullptr;
}

const char* OggFileLoader::read(int* sizeInOut, bool loop) {
    const int wanted = sizeInOut ? *sizeInOut : size;
    if (wanted <= 0) {
        if (sizeInOut) *sizeInOut = 0;
        return buffer;
    }
    if (wanted != capacity || !buffer) {
        freeBuffer();
        buffer = new char[wanted];
        capacity = wanted;
    }
    int fill = 0;
    bool rewoundEmpty = false;  // a rewind that yields nothing would loop forever
    while (fill < wanted) {
        int bitstream = 0;
        const long got = ov_read(vorbisFile, buffer + fill, wanted - fill, 0, 2, 1, &bitstream);
        if (got > 0) {
            fill += static_cast<int>(got);
            rewoundEmpty = false;
        } else if (got < 0) {
            ov_clear(vorbisFile);
            file = nullptr;
            throw std::string("Could not decode Ogg stream: ") + getOggErrorString(static_cast<int>(got));
        } else if (!loop || rewoundEmpty || !seekStart()) {
            break;
        } else {
            rewoundEmpty = true;
        }
    }
    if (sizeInOut) *sizeInOut = fill;
    return buffer;
}

void OggFileLoader::rewind() { seekStart(); }

bool OggFileLoader::seekStart() {
    const int result = ov_time_seek(vorbisFile, 0);
    if (result != 0) debug::error(dbgAudio, "Could not rewind ogg stream: %s", getOggErrorString(result).c_str());
    return result == 0;
}

FileLoader* getFileLoader(const std::string& filename) {
    const size_t n = OGG_EXTENSION.size();
    if (filename.size() >= n && filename.compare(filename.size() - n, n, OGG_EXTENSION) == 0) {
        return new OggFileLoader(filename);
    }
    throw std::string("Unknown file type - \"" + filename + "\"");
}

std::string getOggErrorString(int code) {
    switch (code) {
        case OV_FALSE: return "Not true, or no data available.";
        case OV_HOLE: return "Vorbisfile encoutered missing or corrupt data in the bitstream.";
        case OV_EREAD: return "Read error while fetching compressed data for decode.";
        case OV_EFAULT: return "Internal inconsistency in decode state.";
        case OV_EIMPL: return "Feature not implemented.";
        case OV_EINVAL:
            return "Either an invalid argument, or incompletely initialized argument passed to libvorbisfile call.";
        case OV_ENOTVORBIS: return "The given file/data was not recognized as Ogg Vorbis data.";
        case OV_EBADHEADER:
            return "The file/data is apparently an Ogg Vorbis stream, but contains a corrupted or undecipherable "
                   "header.";
        case OV_EVERSION: return "The bitstream format revision of the given stream is not supported.";
        case OV_EBADLINK:
            return "The given link exists in the Vorbis data stream, but is not decipherable due to garbacge or "
                   "corruption.";
        case OV_ENOSEEK: return "The given stream is not seekable.";
        default: return "(Unknown Ogg error)";
    }
}

}  // namespace audio
}  // namespace norvane
