#ifndef Quillmere_editor_PickLimit_h
#define Quillmere_editor_PickLimit_h

namespace QuillmereEngine {

class Ui;

/**
@brief Drops a pick that no selector takes

The selector that waits is drawn before or after the panel in which the user picks, so it takes the
object in the same frame or in the next one. If it hasn't by then it isn't drawn any more, and the
pick must not wait for one that happens to get the same ID.
*/
class PickLimit {
public:
    /** @brief To be called in each frame once all panels were drawn */
    void frameDrawn(Ui& ui);

private:
    bool _wasPicked = false;
};

}

#endif
