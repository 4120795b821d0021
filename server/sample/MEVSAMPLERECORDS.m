MEVSAMPLERECORDS ; Sample records of all kinds
 ; Nodes as MEVREADRECORDS reads them. The visit's date places a record in its patient's list.
 ;
RECORDS(dfn,visit,age) ; Creates the records of a visit
 NEW locked
 SET locked=$SELECT($$CHANCE^MEVSAMPLE(15):1,1:"")
 IF age>64,$$CHANCE^MEVSAMPLE(50) DO FUNCTIONAL(dfn,visit,locked)
 IF dfn#10=3,$$CHANCE^MEVSAMPLE(50) DO ASTHMA(dfn,visit,locked,$$RANDOM^MEVSAMPLE(4))
 IF age>17,dfn#20=7,$$CHANCE^MEVSAMPLE(30) DO CONTRACT(dfn,visit,locked,$$PICK^MEVSAMPLE("P,M"))
 IF $$CHANCE^MEVSAMPLE(2) DO EMERGENCY(dfn,visit)
 QUIT
 ;
ADD(root,dfn,visit,locked,pieces) ; Files a record of a visit
 NEW ien
 SET ien=$$FILEAT^MEVFILES(root,0,dfn_"^"_visit_"^"_locked_"^"_pieces,dfn,$PIECE(^MEVVST(visit,0),"^"))
 QUIT
 ;
FUNCTIONAL(dfn,visit,locked) ; Fourteen items
 NEW index,pieces
 FOR index=1:1:12 SET $PIECE(pieces,"^",index)=$$PICK^MEVSAMPLE("I,I,I,N,N,T,")
 SET pieces=pieces_"^"_$$PICK^MEVSAMPLE("S,I,D")_"^"_$$PICK^MEVSAMPLE("Y,N,N")
 DO ADD("^MEVVELD",dfn,visit,locked,pieces)
 QUIT
 ;
ASTHMA(dfn,visit,locked,severity) ; Severity, three numbers, four answers
 NEW index,pieces
 SET pieces=severity_"^"_($$RANDOM^MEVSAMPLE(70)+50)_"^"_($$RANDOM^MEVSAMPLE(70)+40)_"^"_($$RANDOM^MEVSAMPLE(40)*10+200)
 FOR index=5:1:8 SET $PIECE(pieces,"^",index)=$$PICK^MEVSAMPLE("Y,N")
 DO ADD("^MEVVAST",dfn,visit,locked,pieces)
 QUIT
 ;
REGISTRY(dfn,status,comment) ; status ^ last visit ^ due ^ next ^ manager, and a comment
 NEW ien,node
 SET node=dfn_"^"_status_"^"_$$ADD^MEVDATE(today,-40)_"^"_$$ADD^MEVDATE(today,50)_"^"_$$ADD^MEVDATE(today,21)
 SET ien=$$FILE^MEVFILES("^MEVREG",dfn,node_"^"_$$PROVIDER^MEVSAMPLE)
 SET ^MEVREG(dfn,1)=comment
 QUIT
 ;
CONTRACT(dfn,visit,locked,type) ; type ^ date initiated ^ provider
 DO ADD("^MEVVTXC",dfn,visit,locked,type_"^"_($PIECE(^MEVVST(visit,0),"^")\1)_"^"_$$PROVIDER^MEVSAMPLE)
 QUIT
 ;
EMERGENCY(dfn,visit) ; urgency ^ arrival ^ other ^ entered by ^ informant ^ notified ^ disposition ^ other ^ departure
 ; ^ departure against advice ^ condition ^ transfer
 NEW pieces
 SET pieces=$$PICK^MEVSAMPLE("E,U,N")_"^"_$$PICK^MEVSAMPLE("A,P,POV,T,W")_"^^"_$$PICK^MEVSAMPLE("A,W,S")
 DO ADD("^MEVVER",dfn,visit,"",pieces_"^Patient^R^D^^"_$PIECE(^MEVVST(visit,0),"^")_"^^Stable^")
 QUIT
 ;
REPRODUCTIVE(dfn,age) ; counts ^ last menstrual period ^ method ^ its date ^ estimation method ^ estimated delivery
 NEW births,ien,node
 SET births=$SELECT(age<16:0,1:$$RANDOM^MEVSAMPLE(5)-1)
 SET node=dfn_"^G"_births_"P"_births_"LC"_births_"SA0TA0"
 SET node=node_"^"_$SELECT(age<52:$$ADD^MEVDATE(today,-$$RANDOM^MEVSAMPLE(28)),1:"")
 SET node=node_"^"_$SELECT(age>55:8,1:$$RANDOM^MEVSAMPLE(13))_"^"_$$ADD^MEVDATE(today,-$$RANDOM^MEVSAMPLE(900))_"^^"
 SET ien=$$FILE^MEVFILES("^MEVREP",dfn,node)
 QUIT
 ;
CHILD(dfn,birth) ; Birth measurements, and infant feeding in the first two years
 NEW count,date,visit
 DO BIRTH(dfn,$$RANDOM^MEVSAMPLE(5)+4,$$RANDOM^MEVSAMPLE(16)-1,$$RANDOM^MEVSAMPLE(4),"")
 FOR count=1:1:$$RANDOM^MEVSAMPLE(3) DO
 . SET date=$$ADD^MEVDATE(birth,count*60)
 . IF date'>today DO FEEDING(dfn,$$VISIT^MEVSAMPLE(dfn,date_".0915"),$$RANDOM^MEVSAMPLE(5))
 QUIT
 ;
BIRTH(dfn,pounds,ounces,order,mother) ; pounds ^ ounces ^ kilograms ^ grams ^ order ^ formula ^ breast stopped
 ; ^ solids ^ mother
 NEW grams,ien,node
 SET grams=$JUSTIFY(pounds*453.592+(ounces*28.35),0,0)
 SET node=dfn_"^"_pounds_"^"_ounces_"^"_(+$JUSTIFY(grams/1000,0,2))_"^"_grams_"^"_order
 SET node=node_"^"_$$RANDOM^MEVSAMPLE(6)_"M^"_$$RANDOM^MEVSAMPLE(12)_"M^"_($$RANDOM^MEVSAMPLE(3)+3)_"M^"_mother
 SET ien=$$FILE^MEVFILES("^MEVBMSR",dfn,node)
 QUIT
 ;
FEEDING(dfn,visit,choice) ; One choice
 DO ADD("^MEVVIF",dfn,visit,"",choice)
 QUIT
 ;
REFUSAL(dfn,date) ; A refusal of any kind
 NEW line
 SET line=$PIECE($TEXT(TYPES+$$RANDOM^MEVSAMPLE(10)^MEVREFUSALS),";;",2)
 DO REFUSE(dfn,date,"",line,$$PICK^MEVSAMPLE(",,Will think about it,Does not want it today,Prefers to wait"))
 QUIT
 ;
REFUSE(dfn,date,locked,kind,comment) ; kind: type;file of the item
 NEW file,ien,item,node
 SET file=$PIECE(kind,";",2),item=$$RANDOM^MEVSAMPLE(5)
 SET:$PIECE(kind,";",3) item=$PIECE(kind,";",3)
 SET node=dfn_"^"_date_"^"_locked_"^"_$PIECE(kind,";")_"^"_item_"^"_$$NAME^MEVFILES(file,item)
 SET ien=$$FILEAT^MEVFILES("^MEVREF",0,node,dfn,date)
 SET:comment'="" ^MEVREF(ien,1)=comment
 QUIT
