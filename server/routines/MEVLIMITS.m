MEVLIMITS ; Limits of a session, a user, and a call; docs/protocol.md lists them
 ;
LONGEST(flags) ; The maximum length of a call's parameter in bytes
 QUIT $SELECT(flags["L":+$PIECE(flags,"L",2),1:10000)
 ;
FORBIDDEN(flags) ; Why a call is refused before it starts, else empty
 ; A user who was disabled meanwhile may not read either.
 NEW long,node
 SET long="The call is longer than "_$FNUMBER($$LONGEST(flags),",")_" bytes: nothing was done."
 IF $LENGTH(param)>$$LONGEST(flags) QUIT long
 IF flags["O" QUIT ""
 SET node=$GET(^MEVUSR(user,0)),person=$PIECE(node,"^")
 IF $PIECE(node,"^",4) QUIT ""
 QUIT $SELECT(person="":"This user",1:person)_" may not work here any more: the user was disabled."
 ;
PATIENCE() ; The number of refusals a minute that cause no delay
 QUIT $SELECT($ZTRNLNM("mev_patience")?1.9N:$ZTRNLNM("mev_patience"),1:100)
 ;
COUNT(key) ; Counts a refusal over all sessions and returns the count, which falls by PATIENCE a minute
 ; ^MEVLIM(key)=seconds ^ count
 NEW count,now,past
 SET now=$ZUT\1000000,past=now-$GET(^MEVLIM(key),now),count=$PIECE($GET(^MEVLIM(key)),"^",2)
 IF past>0 SET count=count-(past*$$PATIENCE/60)
 SET count=$SELECT(count>0:count,1:0)+1,^MEVLIM(key)=now_"^"_count
 QUIT count
 ;
SLOW(count) ; Delays the session by up to a second after many refusals; ends it after ten times PATIENCE
 NEW most
 SET most=$$PATIENCE,row=row+1
 IF count'>most QUIT
 IF count>(10*most)!(row>(10*most)) SET tired=1 QUIT
 HANG $SELECT(count>(2*most):1,1:count-most/most)
 QUIT
 ;
READING ; Delays a user who reads faster than a person can: each look is kept in the audit and would fill the disk
 IF $$COUNT("LOOK "_user)>(10*$$PATIENCE) HANG .2
 QUIT
 ;
EVENTS() ; The maximum number of queued events of a session
 QUIT 5000
 ;
NAMES() ; The maximum number of a session's subscriptions
 QUIT 1000
 ;
SESSIONS() ; The maximum number of a user's sessions over TLS
 QUIT $$PATIENCE\2
 ;
CROWDED(ien) ; True if the user's other sessions have reached the maximum. Local sessions are not limited.
 IF $$CERTIFIED^MEVHOSTCALLS="" QUIT 0
 IF $$OTHERS(ien)<$$SESSIONS QUIT 0
 DO SWEEP^MEVEVENTS
 QUIT $$OTHERS(ien)'<$$SESSIONS
 ;
OTHERS(ien) ; The number of a user's other sessions, including dead ones that SWEEP has not cleared yet
 NEW count,number
 SET count=0,number=""
 FOR  SET number=$ORDER(^MEVSES(number)) QUIT:number=""  DO
 . IF number'=session,$GET(^MEVSES(number,"USER"))=ien SET count=count+1
 QUIT count
