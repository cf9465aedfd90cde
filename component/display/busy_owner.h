#pragma once

/// Something that mustn't be closed while work that was started from it runs.
///
/// Each `enterBusy` is followed by one `leaveBusy`, on every path; between the first and the last of them the
/// owner refuses to close.
class MeroBusyOwner {
public:
    virtual void enterBusy() = 0;
    virtual void leaveBusy() = 0;

protected:
    MeroBusyOwner() = default;
    MeroBusyOwner(const MeroBusyOwner&) = default;
    MeroBusyOwner& operator=(const MeroBusyOwner&) = default;
    ~MeroBusyOwner() = default;
};

/// Keeps an owner busy for as long as it lives. The owner may be null: then nothing is kept.
class MeroBusyScope {
public:
    explicit MeroBusyScope(MeroBusyOwner* busyOwner) : owner(busyOwner) {
        if (owner != nullptr) {
            owner->enterBusy();
        }
    }
    ~MeroBusyScope() {
        if (owner != nullptr) {
            owner->leaveBusy();
        }
    }
    MeroBusyScope(const MeroBusyScope&) = delete;
    MeroBusyScope& operator=(const MeroBusyScope&) = delete;

private:
    MeroBusyOwner* owner;
};
