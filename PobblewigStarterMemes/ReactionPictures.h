#pragma once

#include "PobblewigStarterMemes/Film.h"

/// The drawings of the reactions, by what they express first.
namespace pobblewig::ReactionPictures {

Film laughingOnTheFloor();
Film spitTake();
Film popcorn();

Film partyHat();
Film itWorks();
Film disco();
Film handedIn();
Film trophy();

Film thisIsFine();
Film chewedKeyboard();
Film chartGoingWrong();
Film headOnDesk();

Film orbitingQuestions();
Film doingTheMath();
Film loading();

Film raisedBrow();
Film sideEye();
Film magnifier();

Film fallingMonocle();
Film turnedBack();
Film oneStar();

Film jawThroughTheFloor();
Film soulLeaving();
Film plotTwist();

Film blanketAndTea();
Film thereThere();
Film lentUmbrella();
Film emergencyCookie();

Film floatingOnTears();
Film brbCrying();
Film rainyWindow();

Film sunglasses();
Film sippingTea();
Film micDrop();

Film nightWatch();
Film focusGuard();
Film hugeHeart();

} // namespace pobblewig::ReactionPictures
