#pragma once

namespace zo::platform {

// How long nothing has been heard: a device that plays nothing keeps the machine awake.
class SilenceCount {
public:
    static constexpr int kSampleRate = 48000;
    static constexpr int kBlockFrames = 256;

    // One block more; true when the device may rest.
    bool Add(bool silent) {
        blocks_ = silent ? blocks_ + 1 : 0;
        if (blocks_ < kBlocksBeforeRest) return false;
        blocks_ = 0;
        return true;
    }

private:
    static constexpr int kBlocksBeforeRest = 4 * kSampleRate / kBlockFrames;
    int blocks_ = 0;
};

}  // namespace zo::platform
