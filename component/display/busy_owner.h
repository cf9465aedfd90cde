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

/// Keeps an owner busy for as long as it lives.
class MeroBusyScope {
public:
    explicit MeroBusyScope(MeroBusyOwner& busyOwner) : owner(busyOwner) { owner.enterBusy(); }
    ~MeroBusyScope() { owner.leaveBusy(); }
    MeroBusyScope(const MeroBusyScope&) = delete;
    MeroBusyScope& operator=(const MeroBusyScope&) = delete;

private:
    MeroBusyOwner& owner;
};
