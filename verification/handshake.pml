/* The handshake between show calls, turns, presses and Stop.
 *
 * Three calls want panels of one group's band; an operator presses buttons; the worker carries presses out; a time
 * limit may run out; the host may stop, and run again. What is checked is written where it is said: by the
 * assertions, by the monitor, by the end states (nobody hangs) and by the claim "answered".
 *
 * The parts bear the names of the code that they stand for (behind "code:"). What happens in one job on the main thread,
 * or under one lock, is one atomic step here, and everything else may come in between.
 *
 * Built with one of these, the model leaves out what the house relies on, and must fail:
 *   NO_TICKET            a press ends whoever waits on its panel key when it is carried out
 *   NO_TURN              calls do not queue for the band
 *   PLACE_AFTER_DRAWING  a call takes its place when its panel can be pressed already
 *   NO_ASKING            what a press writes goes into whatever record lies under its panel key
 *
 * What the three calls are is given from outside: KIND0 to KIND2 (ask, refused, message), KEY0 to KEY2 (SLOT1, SLOT2,
 * GROUP; a message is a group's), and LAST_RUN (1, or 2: the third call belongs to the run after the Stop).
 */

#define CALLS 3
#define PRESSES 2 /* those that are pressed at any moment, with any button; the operator then presses what is needed */

#define GROUP 0
#define SLOT1 1
#define SLOT2 2
#define KEYS 3
#define NOBODY 0 /* a call is noted as its number + 1 */

mtype = { ask, refused, message };                  /* what a call is */
mtype = { none, waiting, signalled, interrupted, timedOut }; /* a place; code: Condition::State */
mtype = { ok, clear, cancel };                      /* buttons */
mtype = { answer, acknowledgement };                /* code: Waits::Purpose */
mtype = { unwaited, pending, ended };               /* code: Condition::Ticket */

/* Of each call. */
mtype kind[CALLS];
byte key[CALLS];          /* whose panel it is */
byte arrived[CALLS];      /* its place in the queue for the band; 0 outside; code: Turns::Turn */
bool turnEnded[CALLS];    /* code: Turns::Entry::interrupted */
mtype place[CALLS] = none;
byte placeKey[CALLS];
byte placeOrder[CALLS];
bool stands[CALLS];       /* it waits for its operator, and its panel has been drawn */
bool drawLater[CALLS];    /* code: showError, MainQueue::async */
bool over[CALLS];

/* Of each panel key. */
byte panel[KEYS];         /* whose panel stands there */
bool hasButtons[KEYS];
mtype purpose[KEYS] = answer;
byte record[KEYS];        /* whose entries the record holds; code: PanelRecords::record */
byte asking[KEYS];        /* code: PanelRecords::asking */
byte clicked[KEYS];       /* for whom the button in the record was pressed */

byte arrivals, places;
byte runs = 1;
byte holds;               /* code: KeyRouter::hold, KeyRouter::release */
byte refusals;            /* how often "OK" has found something missing */
bool isInterrupted;       /* code: Waits::isInterrupted */
bool turnsInterrupted;    /* code: Turns::interrupt, Turns::accept */
bool idle = true;         /* whether the worker has nothing to do */

/* A press on its way: panel key, button, purpose, kind of ticket, the ticket's place, the asking, and, for the
 * assertions alone, whose panel was pressed. */
chan work = [4] of { byte, mtype, mtype, mtype, byte, byte, byte };

#define EXCLUDE(a, b) (kind[a] != ask || kind[b] != ask || key[a] == GROUP || key[b] == GROUP || key[a] == key[b])
#define BEFORE(o, c) (o != c && arrived[o] != 0 && arrived[o] < arrived[c] && EXCLUDE(o, c))
/* code: Turns::hasCome */
#define HAS_COME(c) (!BEFORE(0, c) && !BEFORE(1, c) && !BEFORE(2, c))

#define IS_PLACE(c, k, s) (place[c] == s && placeKey[c] == k)
#define IS_TAKEN(c, k) (place[c] != none && placeKey[c] == k)
#define FIRST(c, o, k) (!IS_PLACE(o, k, waiting) || placeOrder[c] <= placeOrder[o])
#define IS_FIRST(c, k) (IS_PLACE(c, k, waiting) && FIRST(c, 0, k) && FIRST(c, 1, k) && FIRST(c, 2, k))

/* code: Waits::Wait::Wait */
inline takePlace(c, k, why)
{
    atomic {
        places++;
        place[c] = waiting;
        placeKey[c] = k;
        placeOrder[c] = places;
        purpose[k] = why;
    }
}

/* code: Waits::Wait::~Wait */
inline leavePlace(c)
{
    atomic {
        place[c] = none;
        purpose[placeKey[c]] = answer;
        placeKey[c] = 0;
        placeOrder[c] = 0
    }
}

/* A panel that has the band alone takes the others away; one of a slot takes the group's away.
 * code: PanelBuilder::drawPanel, ErrorPanel::draw */
inline draw(c, k, buttons)
{
    if
    :: k == GROUP -> panel[SLOT1] = NOBODY; panel[SLOT2] = NOBODY
    :: else -> panel[GROUP] = NOBODY
    fi;
    panel[k] = c + 1;
    hasButtons[k] = buttons
}

/* What ShowCall::beginAsking does in one job of the main thread is several steps here: Stop and whoever only reads may
 * come between.
 * code: ShowCall::askOperator */
inline askOperator(c)
{
#ifndef PLACE_AFTER_DRAWING
    takePlace(c, key[c], answer);
#endif
    if
    :: isInterrupted
    :: else ->
        /* code: PanelRecords::start */
        atomic { record[key[c]] = c + 1; asking[key[c]] = asking[key[c]] + 1; clicked[key[c]] = NOBODY };
#ifdef PLACE_AFTER_DRAWING
        atomic { draw(c, key[c], true) };
        takePlace(c, key[c], answer);
        stands[c] = true;
#else
        atomic { draw(c, key[c], true); stands[c] = true };
#endif
        atomic { place[c] != waiting -> stands[c] = false };
        /* code: ShowCall::takeAway */
        atomic {
            panel[key[c]] = NOBODY;
            if
            :: place[c] == signalled -> assert(holds > 0); holds--
            :: else
            fi
        };
        atomic {
            if
            :: place[c] == signalled ->
                /* The answer is this call's own, and so is the button; "Cancel" leaves no record. */
                assert(record[key[c]] == NOBODY || record[key[c]] == c + 1);
                assert(clicked[key[c]] == NOBODY || clicked[key[c]] == c + 1);
                assert(record[key[c]] == NOBODY || clicked[key[c]] == c + 1)
            :: else -> record[key[c]] = NOBODY; asking[key[c]] = asking[key[c]] + 1; clicked[key[c]] = NOBODY
            fi
        }
    fi;
    leavePlace(c)
}

/* code: showError */
inline showError(c)
{
#ifndef PLACE_AFTER_DRAWING
    takePlace(c, GROUP, acknowledgement);
#endif
    if
    :: isInterrupted
    :: else ->
        drawLater[c] = true;
#ifdef PLACE_AFTER_DRAWING
        !drawLater[c];
        takePlace(c, GROUP, acknowledgement);
#endif
        place[c] != waiting;
        atomic {
            !drawLater[c] ->
            stands[c] = false;
            panel[GROUP] = NOBODY;
            if
            :: place[c] == signalled -> assert(holds > 0); holds--
            :: else
            fi
        }
    fi;
    leavePlace(c)
}

/* code: ShowCall::run */
proctype Call(byte c; byte itsRun)
{
    runs >= itsRun;
#ifndef NO_TURN
    atomic {
        arrivals++;
        arrived[c] = arrivals;
        turnEnded[c] = turnsInterrupted
    };
    /* code: Turns::Turn::wait */
    turnEnded[c] || HAS_COME(c);
#endif
    if
    :: turnEnded[c]
    :: else ->
        panel[key[c]] = NOBODY;
        if
        :: kind[c] == message -> atomic { draw(c, key[c], false) }
        :: kind[c] == refused -> showError(c)
        :: kind[c] == ask -> askOperator(c)
        fi
    fi;
    /* code: Turns::Turn::~Turn */
    atomic { arrived[c] = 0; over[c] = true }
}

/* Jobs that the main thread does when it comes to them. */
proctype Main()
{
    byte c;
end:
    do
    :: atomic { drawLater[0] -> c = 0; draw(c, GROUP, true); stands[c] = place[c] != none; drawLater[c] = false }
    :: atomic { drawLater[1] -> c = 1; draw(c, GROUP, true); stands[c] = place[c] != none; drawLater[c] = false }
    :: atomic { drawLater[2] -> c = 2; draw(c, GROUP, true); stands[c] = place[c] != none; drawLater[c] = false }
    od
}

/* One click. A press holds the keys and takes a ticket in the same job.
 * code: Confirmation::confirmBtnClicked, Waits::press */
inline press(k, b)
{
    owner = panel[k] - 1;
    holds++;
    number = 0;
    if
    :: IS_FIRST(0, k) -> ticket = pending; number = 0
    :: IS_FIRST(1, k) -> ticket = pending; number = 1
    :: IS_FIRST(2, k) -> ticket = pending; number = 2
    :: else ->
        if
        :: IS_TAKEN(0, k) || IS_TAKEN(1, k) || IS_TAKEN(2, k) -> ticket = ended
        :: else -> ticket = unwaited
        fi
    fi;
    /* No press on a panel is lost whose call has not been answered yet. */
    assert(over[owner] || place[owner] == signalled || place[owner] == interrupted || place[owner] == timedOut ||
           (ticket == pending && number == owner));
    work!k, b, purpose[k], ticket, number, asking[k], owner;
    idle = false;
    number = 0; owner = 0; ticket = none
}

#define CAN_PRESS(k) (panel[k] != NOBODY && hasButtons[k])

/* Two presses with any button at any moment, then whatever is needed, one after another. */
proctype Operator()
{
    byte left = PRESSES;
    byte number, owner;
    mtype ticket;
end:
    do
    :: atomic { left > 0 && CAN_PRESS(GROUP) -> press(GROUP, ok); left-- }
    :: atomic { left > 0 && CAN_PRESS(SLOT1) -> press(SLOT1, ok); left-- }
    :: atomic { left > 0 && CAN_PRESS(SLOT2) -> press(SLOT2, ok); left-- }
    :: atomic { left > 0 && CAN_PRESS(SLOT1) -> press(SLOT1, clear); left-- }
    :: atomic { left > 0 && CAN_PRESS(GROUP) && purpose[GROUP] == answer -> press(GROUP, clear); left-- }
    :: atomic { left > 0 && CAN_PRESS(SLOT1) -> press(SLOT1, cancel); left-- }
    :: atomic { left > 0 && CAN_PRESS(GROUP) && purpose[GROUP] == answer -> press(GROUP, cancel); left-- }
    :: atomic { left == 0 && idle && holds == 0 && CAN_PRESS(GROUP) -> press(GROUP, ok) }
    :: atomic { left == 0 && idle && holds == 0 && CAN_PRESS(SLOT1) -> press(SLOT1, ok) }
    :: atomic { left == 0 && idle && holds == 0 && CAN_PRESS(SLOT2) -> press(SLOT2, ok) }
    :: left > 0 -> left = 0
    od
}

/* code: Condition::signal */
inline endWait(n)
{
    place[n] = signalled;
    didEnd = true;
    /* A press ends the call whose panel was pressed. */
    assert(n == owner)
}

/* code: Confirmation::carryOut */
proctype Worker()
{
    byte k, number, asked, owner;
    mtype button, why, ticket;
    bool isOpen, didEnd;
end:
    do
    :: work?k, button, why, ticket, number, asked, owner ->
        didEnd = false;
        /* code: Waits::Press::isOpen */
        atomic {
#ifdef NO_TICKET
            isOpen = true
#else
            isOpen = (ticket == pending && place[number] == waiting) ||
                     (ticket == unwaited && !IS_TAKEN(0, k) && !IS_TAKEN(1, k) && !IS_TAKEN(2, k))
#endif
        };
        if
        :: isOpen && button == clear && why == answer ->
            /* code: PanelRecords::clear */
            atomic {
                if
#ifndef NO_ASKING
                :: asking[k] != asked
#endif
                :: else -> assert(record[k] == NOBODY || record[k] == owner + 1); clicked[k] = NOBODY
                fi
            };
            isOpen = false
        :: isOpen && button == ok && why == answer ->
            /* code: Confirmation::checkAllInputs */
            if
            :: atomic { refusals < 1 -> refusals++; isOpen = false }
            :: true
            fi
        :: else
        fi;
        if
        :: isOpen && why == answer ->
            /* code: PanelRecords::press, PanelRecords::forget */
            atomic {
                if
#ifndef NO_ASKING
                :: asking[k] != asked
#endif
                :: else ->
                    /* Nothing is written into another call's record. */
                    assert(record[k] == NOBODY || record[k] == owner + 1);
                    if
                    :: button == cancel -> record[k] = NOBODY; clicked[k] = NOBODY
                    :: else -> clicked[k] = owner + 1
                    fi
                fi
            }
        :: else
        fi;
        /* code: Waits::Press::end */
        atomic {
            if
            :: !isOpen
#ifdef NO_TICKET
            :: isOpen && IS_FIRST(0, k) -> endWait(0)
            :: isOpen && IS_FIRST(1, k) -> endWait(1)
            :: isOpen && IS_FIRST(2, k) -> endWait(2)
#else
            :: isOpen && ticket == pending && place[number] == waiting -> endWait(number)
#endif
            :: else -> assert(place[owner] != waiting)
            fi
        };
        /* What was not ended lets the keys go itself; what was, leaves that to its call. */
        atomic {
            if
            :: didEnd
            :: else -> assert(holds > 0); holds--
            fi;
            idle = empty(work);
            /* Forgotten, so that what is past tells no states apart. */
            k = 0; number = 0; asked = 0; owner = 0; didEnd = false; isOpen = false;
            button = none; why = none; ticket = none
        }
    od
}

/* At most one time limit, at any moment after the drawing.
 * code: Condition::Entry::look */
proctype Limit()
{
    if
    :: atomic { kind[0] == ask && stands[0] && place[0] == waiting -> place[0] = timedOut }
    :: atomic { kind[1] == ask && stands[1] && place[1] == waiting -> place[1] = timedOut }
    :: true
    fi
}

inline interruptPlace(c)
{
    if
    :: place[c] == waiting -> place[c] = interrupted
    :: else
    fi
}

#define FIRST_RUN_IS_OVER (over[0] && over[1] && (over[2] || LAST_RUN == 2))

/* The end of all waits, at any moment, and another run.
 * code: Waits::interrupt, Waits::accept */
proctype Host()
{
    if
    :: isInterrupted = true;
        atomic {
            turnsInterrupted = true;
            turnEnded[0] = arrived[0] != 0;
            turnEnded[1] = arrived[1] != 0;
            turnEnded[2] = arrived[2] != 0
        };
        /* code: Condition::interruptAll */
        atomic { interruptPlace(0); interruptPlace(1); interruptPlace(2) }
    :: true
    fi;
    FIRST_RUN_IS_OVER;
    isInterrupted = false;
    turnsInterrupted = false;
    runs = 2
}

#define IN_VAIN(c) (stands[c] && place[c] == waiting && panel[placeKey[c]] != c + 1)

/* No call waits for its operator without its panel in the window; and in the end no keys are held. */
proctype Monitor()
{
end:
    do
    :: atomic { IN_VAIN(0) || IN_VAIN(1) || IN_VAIN(2) -> assert(false) }
    :: atomic { over[0] && over[1] && over[2] && idle && empty(work) -> assert(holds == 0); break }
    od
}

init
{
    atomic {
        kind[0] = KIND0; key[0] = KEY0;
        kind[1] = KIND1; key[1] = KEY1;
        kind[2] = KIND2; key[2] = KEY2;
        run Monitor();
        run Call(0, 1);
        run Call(1, 1);
        run Call(2, LAST_RUN);
        run Main();
        run Worker();
        run Operator();
        run Limit();
        run Host()
    }
}

/* Whoever asks gets an answer, of whatever kind, as long as somebody presses what stands there. */
ltl answered { <> (over[0] && over[1] && over[2]) }
