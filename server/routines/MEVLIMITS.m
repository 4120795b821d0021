MEVLIMITS ; What one session, one user and one call may take. docs/protocol.md has the table of limits.
 ;
LONGEST(flags) ; The bytes of a call's longest parameter
 QUIT $SELECT(flags["L":+$PIECE(flags,"L",2),1:10000)
 ;
FORBIDDEN(flags) ; Why a call is not even begun, empty where it may
 ; A user who was disabled meanwhile reads no more either.
 NEW node
 IF $LENGTH(param)>$$LONGEST(flags) QUIT "The call is longer than "_$FNUMBER($$LONGEST(flags),",")_" bytes: nothing was done."
 IF flags["O" QUIT ""
 SET node=$GET(^MEVUSR(user,0)),person=$PIECE(node,"^")
 QUIT $SELECT($PIECE(node,"^",4):"",1:$SELECT(person="":"This user",1:person)_" may not work here any more: the user was disabled.")
 ;
PATIENCE() ; The refusals in a minute that cost a user nothing
 QUIT $SELECT($ZTRNLNM("mev_patience")?1.9N:$ZTRNLNM("mev_patience"),1:100)
 ;
COUNT(key) ; Counts a refusal, of a user or of sign-ons, over all sessions; gives the count, which falls by PATIENCE a minute
 ; ^MEVLIM(key)=seconds ^ count
 NEW count,now,past
 SET now=$ZUT\1000000,past=now-$GET(^MEVLIM(key),now),count=$PIECE($GET(^MEVLIM(key)),"^",2)
 IF past>0 SET count=count-(past*$$PATIENCE/60)
 SET count=$SELECT(count>0:count,1:0)+1,^MEVLIM(key)=now_"^"_count
 QUIT count
 ;
SLOW(count) ; Makes a session wait, up to a second, after so many refusals; after ten times PATIENCE of them it ends
 NEW most
 SET most=$$PATIENCE,row=row+1
 IF count'>most QUIT
 IF count>(10*most)!(row>(10*most)) SET tired=1 QUIT
 HANG $SELECT(count>(2*most):1,1:count-most/most)
 QUIT
 ;
READING ; Lets a user wait who looks at more than a person can: each look is kept in the audit, and would fill the disk
 IF $$COUNT("LOOK "_user)>(10*$$PATIENCE) HANG .2
 QUIT
 ;
EVENTS() ; The events that wait for one session at most
 QUIT 5000
 ;
NAMES() ; The subscriptions of one session at most
 QUIT 1000
 ;
SESSIONS() ; The sessions over TLS of one user at most
 QUIT $$PATIENCE\2
 ;
CROWDED(ien) ; This user has that many other sessions. Local ones are nobody's business but the user's.
 IF $$CERTIFIED^MEVHOSTCALLS="" QUIT 0
 IF $$OTHERS(ien)<$$SESSIONS QUIT 0
 DO SWEEP^MEVEVENTS
 QUIT $$OTHERS(ien)'<$$SESSIONS
 ;
OTHERS(ien) ; A user's other sessions, also dead ones that nobody has swept out yet
 NEW count,number
 SET count=0,number=""
 FOR  SET number=$ORDER(^MEVSES(number)) QUIT:number=""  IF number'=session,$GET(^MEVSES(number,"USER"))=ien SET count=count+1
 QUIT count
